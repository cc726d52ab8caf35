#pragma once

#include <string_view>

struct sqlite3;

namespace engine {

// Orders UTF-8 texts the way a user reads a sorted list: case-blind over all of Unicode, with
// accented letters next to their base letter ("Arzt" < "Ärzte" < "Az"). Texts that differ only
// in accents order by their case-folded form, so the order is total; texts that differ only in
// case are equal. Returns <0, 0 or >0.
int compareJetText(std::string_view a, std::string_view b);

// Replaces SQLite's ASCII-only NOCASE collation on the connection with compareJetText.
void registerJetCollation(sqlite3* db);

}  // namespace engine
