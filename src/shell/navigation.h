#pragma once

#include <QColor>
#include <QRect>
#include <QString>

namespace engine {
class Recordset;
}

namespace shell {

// Moves by a move button's index: 1 first, 2 previous (staying on the first), 3 next (staying
// on the last), 4 last; other indices and empty record sets do nothing.
void moveRecord(int index, engine::Recordset& rows);

// The position display: current row number, two blanks, row count ("3  17").
QString positionText(const engine::Recordset& rows);
// The same position as a sentence for a screen reader: "Compilation 3 of 17".
QString positionSentence(const QString& noun, qint64 position, qint64 count);

// Panel 2 of the status bar: "C 17    List 12".
QString listCountText(int recordCount, int gotoCount);

// The colour count of a screen: 2 to the power of its bits per pixel, times its planes.
double colourCount(int bitsPerPixel, int planes = 1);
// The position display's text colour by the screen's colours.
QColor positionColour(double colours);

// Centres a dialog over the window that opens it (a little above the middle).
QRect placedOver(const QRect& child, const QRect& parent);
// Moves a window to the left and top of its opener, keeping its size.
QRect alignedWith(const QRect& child, const QRect& parent);

// Twips, the unit of window positions in the layouts: 15 to the pixel at 96 dpi.
inline int twipsToPixels(int twips) {
    return twips / 15;
}

}  // namespace shell
