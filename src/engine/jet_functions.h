#pragma once

#include <QString>

struct sqlite3;

namespace engine {

// Rounds halves to the even neighbour (2.5 -> 2, 3.5 -> 4), as CInt and CLng do.
double roundHalfToEven(double value);

// Jet's Val(): the number at the start of a text, blanks and tabs ignored; 0 when none.
double jetVal(const QString& text);

// The text functions Mid, Left, Right, Len, UCase, LCase, Trim, LTrim, RTrim, InStr.
void registerJetTextFunctions(sqlite3* db);

// Val, IIf, Nz, CStr, CInt, CLng, Int, format, Year, Month, Day, Now, Date.
void registerJetValueFunctions(sqlite3* db);

}  // namespace engine
