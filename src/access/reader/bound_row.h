#pragma once

#include <sqlite3.h>
#include "access/reader/libmdb.h"

#include <QByteArray>
#include <memory>
#include <vector>

#include "access/reader/column_plan.h"

namespace mdbread {

// The columns of a table read row by row and handed to an SQLite INSERT with one parameter per
// column, in column order. Only text columns are bound to buffers (libmdb converts them to
// UTF-8); every other value is read from the page where libmdb found it, so libmdb does not print
// numbers and dates that would only be parsed again.
class BoundRow {
  public:
    explicit BoundRow(MdbTableDef* table);
    BoundRow(const BoundRow&) = delete;
    BoundRow& operator=(const BoundRow&) = delete;

    QList<accessfile::ColumnSpec> columnSpecs() const;
    // Moves to the next row; false at the end of the table.
    bool fetch();
    void bindInto(sqlite3_stmt* statement) const;

  private:
    struct Column {
        MdbColumn* column;
        ColumnPlan plan;
        std::unique_ptr<char[]> buffer;
        int length = 0;
        bool bound = false;  // libmdb writes the value's text into buffer on every fetch
    };

    void bindColumn(sqlite3_stmt* statement, int index, const Column& column) const;
    void bindFixed(sqlite3_stmt* statement, int index, const Column& column) const;
    // index counts from 1, as SQLite parameters do
    bool isTextNull(int index) const;
    bool hasEmptyText() const;
    void readNullFlags();
    QByteArray longValue(const Column& column) const;
    QByteArray memoText(const Column& column) const;

    MdbTableDef* table_;
    MdbHandle* mdb_;
    std::vector<Column> columns_;
    std::vector<bool> nulls_;  // null flags of the current row, in column order
};

}  // namespace mdbread
