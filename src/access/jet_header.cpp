#include "access/jet_header.h"

#include <QFile>

namespace accessfile {

namespace {
// Page 0 starts with the bytes 00 01 00 00 and the format's name, ending in a zero byte.
constexpr char kPageStart[] = {0x00, 0x01, 0x00, 0x00};
constexpr qsizetype kNameOffset = 4;
const QByteArray kJetName = QByteArrayLiteral("Standard Jet DB\0");
const QByteArray kAceName = QByteArrayLiteral("Standard ACE DB\0");
constexpr qsizetype kHeaderLength = 20;
}  // namespace

bool hasJetHeader(const QByteArray& start) {
    if (start.size() < kHeaderLength || !start.startsWith(QByteArray(kPageStart, 4)))
        return false;
    const QByteArray name = start.mid(kNameOffset, kJetName.size());
    return name == kJetName || name == kAceName;
}

bool fileHasJetHeader(const QString& file) {
    QFile input(file);
    if (!input.open(QIODevice::ReadOnly))
        return false;
    return hasJetHeader(input.read(kHeaderLength));
}

}  // namespace accessfile
