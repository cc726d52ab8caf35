#include "access/reader/commands.h"

#include <cstdio>

#include "access/reader/bound_row.h"
#include "access/reader/failure.h"
#include "access/reader/mdb_file.h"
#include "access/reader/sqlite_out.h"

namespace mdbread {

using accessfile::protocol::ExitCode;

namespace {

constexpr int kRowsPerProgressLine = 2000;

void reportProgress(const QString& table, long rows) {
    std::printf("%s%s %ld\n", accessfile::protocol::kProgressPrefix, table.toUtf8().constData(),
                rows);
    std::fflush(stdout);
}

// A table's own key, the whole-number column named after it ("AlbumID" of "Album"), gets an
// index: joins look rows up by it, and without one SQLite builds a covering index of the whole
// table on every join. Columns that refer to other tables get none; a join that needs one
// builds it itself, which costs less than indexing every reference on every copy.
bool isOwnKey(const QString& table, const accessfile::ColumnSpec& column) {
    return column.name.compare(table + QLatin1String("ID"), Qt::CaseInsensitive) == 0 &&
           column.declaredType.contains(QLatin1String("INT"), Qt::CaseInsensitive);
}

void indexOwnKey(const QString& table, const QList<accessfile::ColumnSpec>& columns,
                 SqliteOut& out) {
    for (const accessfile::ColumnSpec& column : columns) {
        if (isOwnKey(table, column)) {
            out.execute(
                QStringLiteral("CREATE INDEX IF NOT EXISTS %1 ON %2 (%3)")
                    .arg(accessfile::quotedIdentifier(table + QLatin1Char('_') + column.name),
                         accessfile::quotedIdentifier(table),
                         accessfile::quotedIdentifier(column.name)));
        }
    }
}

// A damaged data page reads as no rows at all, without an error: the count the table's
// definition keeps tells.
void reportIfIncomplete(const QString& table, long expected, long copied) {
    if (expected == copied)
        return;
    std::printf("%s%ld %ld %s\n", accessfile::protocol::kIncompletePrefix, expected, copied,
                table.toUtf8().constData());
    std::fflush(stdout);
}

void copyTable(const MdbFile& file, MdbCatalogEntry* entry, const QString& target, SqliteOut& out) {
    const TableDefPtr table = file.readTable(entry);
    BoundRow row(table.get());
    const QList<accessfile::ColumnSpec> columns = row.columnSpecs();
    out.execute(
        QStringLiteral("DROP TABLE IF EXISTS %1").arg(accessfile::quotedIdentifier(target)));
    out.execute(accessfile::createTableSql(target, columns));
    const StatementPtr insert = out.prepare(accessfile::insertSql(target, columns));
    long rows = 0;
    while (row.fetch()) {
        row.bindInto(insert.get());
        out.insertRow(insert.get());
        if (++rows % kRowsPerProgressLine == 0)
            reportProgress(target, rows);
    }
    reportProgress(target, rows);
    reportIfIncomplete(target, long(table->num_rows), rows);
    indexOwnKey(target, columns, out);
}

}  // namespace

void listTables(const char* accessFile) {
    const MdbFile file(accessFile);
    for (const QString& name : file.userTableNames())
        std::printf("%s\n", name.toUtf8().constData());
    std::fflush(stdout);
}

void copyTables(const char* accessFile, const char* sqliteFile, const QStringList& tables) {
    const MdbFile file(accessFile);
    QList<MdbCatalogEntry*> entries;
    for (const QString& name : tables) {
        MdbCatalogEntry* entry = file.findUserTable(name);
        if (entry == nullptr)
            throw Failure(ExitCode::kTableMissing,
                          (accessfile::protocol::kMissingTablePrefix + name).toStdString());
        entries << entry;
    }
    SqliteOut out(sqliteFile);
    out.execute(QStringLiteral("BEGIN IMMEDIATE"));
    for (qsizetype i = 0; i < tables.size(); ++i)
        copyTable(file, entries[i], tables[i], out);
    out.execute(QStringLiteral("COMMIT"));
}

}  // namespace mdbread
