#pragma once

#include <sqlite3.h>
#include "access/reader/libmdb.h"

#include <QByteArray>
#include <memory>
#include <vector>

#include "access/reader/column_plan.h"

namespace mdbread {

// The columns of a table bound to buffers, so that each fetched row can be handed to an SQLite
// INSERT with one parameter per column, in column order.
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
    };

    void bindColumn(sqlite3_stmt* statement, int index, const Column& column) const;
    void bindFixed(sqlite3_stmt* statement, int index, const Column& column) const;
    // index counts from 1, as SQLite parameters do
    bool isTextNull(int index) const;
    QByteArray longValue(const Column& column) const;
    QByteArray memoText(const Column& column) const;

    MdbTableDef* table_;
    MdbHandle* mdb_;
    std::vector<Column> columns_;
    std::vector<bool> nulls_;  // null flags of the current row, in column order
};

}  // namespace mdbread
