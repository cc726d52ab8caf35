#include "shell/navigation.h"

#include <cmath>

#include "engine/recordset.h"
#include "store/screen_colours.h"

namespace shell {

void moveRecord(int index, engine::Recordset& rows) {
    if (rows.recordCount() == 0) {
        return;
    }
    switch (index) {
        case 1:
            rows.moveFirst();
            break;
        case 2:
            rows.movePrevious();
            if (rows.bof())
                rows.moveFirst();
            break;
        case 3:
            rows.moveNext();
            if (rows.eof())
                rows.moveLast();
            break;
        case 4:
            rows.moveLast();
            break;
        default:
            break;
    }
}

QString positionText(const engine::Recordset& rows) {
    return QStringLiteral("%1  %2").arg(rows.absolutePosition() + 1).arg(rows.recordCount());
}

QString positionSentence(const QString& noun, qint64 position, qint64 count) {
    return QStringLiteral("%1 %2 of %3").arg(noun).arg(position).arg(count);
}

QString listCountText(int recordCount, int gotoCount) {
    return QStringLiteral("C %1    List %2").arg(recordCount).arg(gotoCount);
}

double colourCount(int bitsPerPixel, int planes) {
    return std::pow(2.0, bitsPerPixel) * planes;
}

QColor positionColour(double colours) {
    return store::hasFewColours(colours) ? QColor(0, 128, 0) : QColor(64, 64, 64);
}

namespace {
// Whole pixels, halves to the even neighbour.
int roundEven(double value) {
    return static_cast<int>(std::nearbyint(value));
}
}  // namespace

QRect placedOver(const QRect& child, const QRect& parent) {
    const int left = roundEven(parent.left() + (parent.width() - child.width()) / 2.0);
    const int top = roundEven(parent.top() + (parent.height() - child.height()) / 2.5);
    return QRect(left, top, child.width(), child.height());
}

QRect alignedWith(const QRect& child, const QRect& parent) {
    return QRect(parent.left(), parent.top(), child.width(), child.height());
}

}  // namespace shell
