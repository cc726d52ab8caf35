#include "tools/mdb_tools.h"

#include <gtest/gtest.h>
#include <QProcess>
#include <QRegularExpression>

namespace mdbtools {

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

QString schema(const QString& path, const QString& table) {
    return run("mdb-schema", {"-T", table, "--no-relations", path, "access"});
}

std::vector<std::pair<QString, QString>> columns(const QString& path, const QString& table) {
    static const QRegularExpression line(R"(^\s*\[([^\]]+)\]\s+(.+?),?\s*$)");
    std::vector<std::pair<QString, QString>> out;
    for (const QString& l : schema(path, table).split('\n')) {
        const auto m = line.match(l);
        if (m.hasMatch())
            out.emplace_back(m.captured(1), m.captured(2));
    }
    return out;
}

std::vector<QVariantList> parseCsv(const QString& text) {
    std::vector<QVariantList> out;
    QVariantList row;
    QString cell;
    bool quoted = false, inQuotes = false, any = false;
    auto endCell = [&] {
        row << (quoted ? QVariant(cell) : cell.isEmpty() ? QVariant() : QVariant(cell));
        cell.clear();
        quoted = false;
    };
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        any = true;
        if (inQuotes) {
            if (c == '"' && i + 1 < text.size() && text[i + 1] == '"')
                cell += c, ++i;
            else if (c == '"')
                inQuotes = false;
            else
                cell += c;
        } else if (c == '"') {
            inQuotes = quoted = true;
        } else if (c == ',') {
            endCell();
        } else if (c == '\n') {
            endCell();
            out.push_back(row);
            row.clear();
            any = false;
        } else {
            cell += c;
        }
    }
    if (any) {
        endCell();
        out.push_back(row);
    }
    return out;
}

std::vector<QVariantList> rows(const QString& path, const QString& table) {
    return parseCsv(run("mdb-export", {"-H", "-T", "%Y-%m-%d %H:%M:%S", path, table}));
}

QStringList header(const QString& path, const QString& table) {
    const QString all = run("mdb-export", {path, table});
    return all.section('\n', 0, 0).split(',');
}

}  // namespace mdbtools

void PrintTo(const QVariant& value, std::ostream* os) {
    *os << (value.isValid() ? '"' + value.toString().toStdString() + '"' : std::string("<null>"));
}
