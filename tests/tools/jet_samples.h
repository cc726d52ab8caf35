#pragma once

#include <gtest/gtest.h>
#include <QDateTime>
#include <QString>
#include <QVariant>

#include "jet4/jet4.h"

// One sample of every column type in both Jet formats: the writer's tests read it back through
// mdbtools, the Access reader's tests through the reading program.
namespace jetsample {

struct FormatCase {
    jet4::Format format;
    const char* name;  // "Jet3" or "Jet4", as mdb-ver names it in capitals
    int pageSize;
    QString wideText;  // text beyond ASCII that the format keeps
};

inline void PrintTo(const FormatCase& format, std::ostream* out) {
    *out << format.name;
}

inline const FormatCase kFormats[] = {
    {jet4::Format::Jet3, "Jet3", 2048, QStringLiteral("Señor “Ñ” äöüß € ½ ™ Œuvre")},
    {jet4::Format::Jet4, "Jet4", 4096, QStringLiteral("日本 🎵 Ωmega Björk")},
};

inline std::string formatName(const ::testing::TestParamInfo<FormatCase>& info) {
    return info.param.name;
}

// Text that changes along its length, so misplaced parts of a long value show.
inline QString numberedText(int characters) {
    QString text;
    for (int i = 0; text.size() < characters; ++i)
        text += QStringLiteral("%1 Größe „€“|").arg(i);
    return text.left(characters);
}

inline const QByteArray kBlob("\x00\x01\xff", 3);

// "Künstler": a column of each type, and four rows: extremes, the other extremes with long
// values, all Null, and zeros with empty texts.
inline jet4::Table allTypes(const FormatCase& f) {
    using jet4::Type;
    const std::vector<jet4::Column> columns{
        {"Flag", Type::Boolean}, {"Small", Type::Byte},     {"Int", Type::Integer},
        {"Big", Type::Long},     {"Money", Type::Currency}, {"Float", Type::Single},
        {"Real", Type::Double},  {"When", Type::DateTime},  {"Name", Type::Text, 50},
        {"Notiz", Type::Memo},   {"Blob", Type::Ole},       {"Größe", Type::Text}};
    jet4::Table table(QStringLiteral("Künstler"), columns, f.format);
    table.addRow({true, 255, -32768, 2147483647, 1234.5678, 1.1, 3.141592653589793,
                  QDateTime(QDate(1987, 5, 1), QTime(13, 45, 30)), QStringLiteral("Die Ärzte"),
                  f.wideText, kBlob, QStringLiteral("O'Neil\nzweite Zeile")});
    table.addRow({false, 0, 32767, -2147483647 - 1, -0.0001, -2.25e10, 1e-300, QDate(1899, 12, 30),
                  f.wideText.left(8), numberedText(5000), QByteArray(9000, 'o'),
                  numberedText(255)});
    table.addRow(QVariantList(12));
    table.addRow({true, 1, 0, 0, 0, 0, 0, QDateTime(QDate(1969, 7, 20), QTime(20, 17, 40)),
                  QString(""), QString(""), QVariant(), numberedText(254)});
    return table;
}

}  // namespace jetsample
