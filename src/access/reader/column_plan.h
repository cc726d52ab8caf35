#pragma once

#include "access/reader/libmdb.h"

#include "access/jet_values.h"

namespace mdbread {

// How a column's values are taken from a fetched row.
enum class ValueKind {
    YesNo,     // -1 or 0
    Byte,      // unsigned 8 bits
    Integer,   // signed 16 bits
    Long,      // signed 32 bits
    Currency,  // 64-bit ten-thousandths
    Single,
    Double,
    Date,     // ISO text
    Text,     // libmdb's UTF-8 text
    Memo,     // long text, read in full
    Binary,   // fixed bytes in the row
    Ole,      // long binary, read in full
    Printed,  // libmdb's printed form (decimal numbers, replication ids)
};

struct ColumnPlan {
    ValueKind kind;
    accessfile::ColumnSpec definition;
};

ColumnPlan planColumn(const MdbHandle* mdb, const MdbColumn* column);

}  // namespace mdbread
