#pragma once

#include <QString>
#include <QStringList>
#include <memory>
#include <vector>

namespace engine {

// A table whose definition states more (or fewer) rows than could be read from its pages: the
// file is damaged there.
struct IncompleteTable {
    QString table;
    qint64 expected = 0;  // the row count the table's definition states
    qint64 copied = 0;
};

// "Track: 300 rows expected, 275 read", one line a table.
QStringList describeIncompleteTables(const std::vector<IncompleteTable>& tables);

// Reads tables out of database files the engine cannot open itself (Access files). The engine
// uses it for linked tables and for opening such a file read-only to list its tables.
class ForeignTableReader {
  public:
    virtual ~ForeignTableReader() = default;
    // True when the file looks like one this reader understands (by its header).
    virtual bool canRead(const QString& file) const = 0;
    // Names of the user tables of the file. Throws JetError when the file cannot be read.
    virtual QStringList tableNames(const QString& file) = 0;
    // Copies the named tables into the SQLite file sqliteOut (created when missing, tables of the
    // same name replaced), with declared column types as engine/field_type.h gives them and text
    // columns in the engine's collation. Returns the tables it could not read whole (their readable
    // rows are copied). Throws JetError: kObjectNotFound (3011) with a description naming the
    // missing table, kNotADatabase (3343) for a foreign file or one damaged beyond reading.
    virtual std::vector<IncompleteTable> copyTables(const QString& file, const QStringList& tables,
                                                    const QString& sqliteOut) = 0;
};

// The reader the engine uses; the application installs the Access reader at start.
void setForeignTableReader(std::shared_ptr<ForeignTableReader> reader);
ForeignTableReader* foreignTableReader();

}  // namespace engine
