#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>
#include <ostream>
#include <vector>

#include "albumgen/albumgen.h"

// Failed comparisons show texts, not code units.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

namespace albumtest {

// A source row as cell texts in sourceColumns() order.
using SourceRow = QStringList;

// Every column of the source table, in the order rows are compared (not the table's order).
const QStringList& sourceColumns();
int columnIndex(const QString& name);

inline const QString kNull = QStringLiteral("<null>");
// The text a cell is compared by: kNull for Null, yes/no for Live, else the value's text.
QString cellText(const QString& column, const QVariant& value);

// The rows the source table must hold for the album tables as written, worked out from the
// tables directly: one row per track performer per album performer, unmatched left joins as
// Null, empty versions as Null and the recording year from the trimmed date text.
std::vector<SourceRow> expectedSourceRows(const std::vector<albumgen::TableRows>& tables);

// Empty when both hold the same rows, counting repeats and ignoring order; else the rows only
// one side holds (the first few of each).
QString multisetDifference(std::vector<SourceRow> expected, std::vector<SourceRow> actual);

// True when row a may stand before row b: track performer sort, album performer sort and
// album title case-blind, then item and index as numbers.
bool inSourceOrder(const SourceRow& a, const SourceRow& b);

}  // namespace albumtest
