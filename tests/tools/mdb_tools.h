#pragma once

#include <gtest/gtest.h>
#include <QProcess>
#include <QRegularExpression>
#include <QString>
#include <QStringList>
#include <ostream>
#include <vector>

// Reads database files back through mdbtools' command-line programs, the independent reader
// every written file has to satisfy. A program that does not exit cleanly or warns fails the test.
namespace mdbtools {

// Separators no value holds, so that cells need no quoting.
inline const QString kCellEnd(QChar(0x1f));
inline const QString kRowEnd(QChar(0x1e));
inline const QString kNull(QChar(0x1a));

inline QString run(const QString& program, const QStringList& arguments) {
    // Jet 3 files keep text in a Windows code page; ours are written in cp1252.
    qputenv("MDB_JET3_CHARSET", "CP1252");
    QProcess process;
    process.start(program, arguments);
    const bool finished = process.waitForFinished(120000);
    const QString err = QString::fromUtf8(process.readAllStandardError());
    EXPECT_TRUE(finished && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0)
        << program.toStdString() << " " << arguments.join(' ').toStdString() << ": "
        << err.toStdString();
    EXPECT_TRUE(err.trimmed().isEmpty())
        << program.toStdString() << " warned: " << err.toStdString();
    return QString::fromUtf8(process.readAllStandardOutput());
}

inline QStringList tables(const QString& path, bool withSystemTables = false) {
    QStringList args{"-1"};
    if (withSystemTables)
        args << "-S";
    return run("mdb-tables", args << path).split('\n', Qt::SkipEmptyParts);
}

// Column name and type name from the schema text, e.g. {"Title", "Text (510)"}.
inline std::vector<std::pair<QString, QString>> columns(const QString& path, const QString& table) {
    static const QRegularExpression line(R"(^\s*\[([^\]]+)\]\s+(.+?),?\s*$)");
    std::vector<std::pair<QString, QString>> out;
    const QString schema = run("mdb-schema", {"-T", table, "--no-relations", path, "access"});
    for (const QString& l : schema.split('\n')) {
        const auto m = line.match(l);
        if (m.hasMatch())
            out.emplace_back(m.captured(1), m.captured(2));
    }
    return out;
}

// Rows without the header, each cell as its text: "<null>" for Null and for an empty text (which
// mdbtools shows alike), dates as "yyyy-MM-dd hh:mm:ss", binary values in hex.
inline const QString kNullText = QStringLiteral("<null>");
inline std::vector<QStringList> rows(const QString& path, const QString& table) {
    const QString text = run("mdb-export", {"-H", "-Q", "-d", kCellEnd, "-R", kRowEnd, "-0", kNull,
                                            "-b", "hex", "-T", "%Y-%m-%d %H:%M:%S", path, table});
    std::vector<QStringList> out;
    for (const QString& row : text.split(kRowEnd, Qt::SkipEmptyParts)) {
        QStringList cells = row.split(kCellEnd);
        for (QString& cell : cells) {
            if (cell == kNull || cell.isEmpty())
                cell = kNullText;
        }
        out.push_back(cells);
    }
    return out;
}

}  // namespace mdbtools

// Failed comparisons show texts, not code units.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}
