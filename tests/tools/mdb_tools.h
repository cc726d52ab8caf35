#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>
#include <ostream>
#include <vector>

// Reads database files back through mdbtools' command-line programs, the independent
// reader every written file has to satisfy.
namespace mdbtools {

// Standard output of a program; a test failure is recorded when it does not exit cleanly.
QString run(const QString& program, const QStringList& arguments);

QStringList tables(const QString& path, bool withSystemTables = false);

// Column name and type name from the schema text, e.g. {"Title", "Text (510)"}.
std::vector<std::pair<QString, QString>> columns(const QString& path, const QString& table);

// Rows without the header; a cell is an invalid QVariant for Null (mdbtools shows an empty text
// as Null too) and a QString otherwise. Dates come as "yyyy-MM-dd hh:mm:ss", binary as hex.
std::vector<QVariantList> rows(const QString& path, const QString& table);
QStringList header(const QString& path, const QString& table);

}  // namespace mdbtools

// Readable test failures: Null shows as <null>, any other value as its text.
void PrintTo(const QVariant& value, std::ostream* os);
