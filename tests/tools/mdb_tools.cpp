#include "tools/mdb_tools.h"

#include <gtest/gtest.h>
#include <QProcess>
#include <QRegularExpression>

namespace mdbtools {

namespace {
// Separators no value holds, so that cells need no quoting.
const QString kCellEnd(QChar(0x1f));
const QString kRowEnd(QChar(0x1e));
const QString kNull(QChar(0x1a));
}  // namespace

QString run(const QString& program, const QStringList& arguments) {
    QProcess process;
    // Jet 3 files keep text in a Windows code page; ours are written in cp1252.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("MDB_JET3_CHARSET", "CP1252");
    process.setProcessEnvironment(environment);
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

QStringList tables(const QString& path, bool withSystemTables) {
    QStringList args{"-1"};
    if (withSystemTables)
        args << "-S";
    return run("mdb-tables", args << path).split('\n', Qt::SkipEmptyParts);
}

std::vector<std::pair<QString, QString>> columns(const QString& path, const QString& table) {
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

std::vector<QVariantList> rows(const QString& path, const QString& table) {
    const QString text = run("mdb-export", {"-H", "-Q", "-d", kCellEnd, "-R", kRowEnd, "-0", kNull,
                                            "-b", "hex", "-T", "%Y-%m-%d %H:%M:%S", path, table});
    std::vector<QVariantList> out;
    for (const QString& row : text.split(kRowEnd, Qt::SkipEmptyParts)) {
        QVariantList cells;
        for (const QString& cell : row.split(kCellEnd))
            cells << (cell == kNull || cell.isEmpty() ? QVariant() : QVariant(cell));
        out.push_back(cells);
    }
    return out;
}

QStringList header(const QString& path, const QString& table) {
    return run("mdb-export", {path, table}).section('\n', 0, 0).split(',');
}

}  // namespace mdbtools

void PrintTo(const QVariant& value, std::ostream* os) {
    *os << (value.isValid() ? '"' + value.toString().toStdString() + '"' : std::string("<null>"));
}
