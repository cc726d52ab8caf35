#include "access/reader/column_plan.h"

#include "engine/field_type.h"

namespace mdbread {

using engine::FieldType;

namespace {

constexpr int kReplicationIdLength = 38;  // "{xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx}"

// Jet 4 keeps text sizes in bytes of UTF-16; Access shows them in characters.
int textLength(const MdbHandle* mdb, const MdbColumn* column) {
    return IS_JET3(mdb) ? column->col_size : column->col_size / 2;
}

ColumnPlan typed(ValueKind kind, FieldType type, int size = 0) {
    return {kind, {QString(), engine::declaredType(type, size), engine::isTextType(type)}};
}

ColumnPlan binary(ValueKind kind, const QString& declared) {
    return {kind, {QString(), declared, false}};
}

ColumnPlan planByType(const MdbHandle* mdb, const MdbColumn* column) {
    switch (column->col_type) {
        case MDB_BOOL:
            return typed(ValueKind::YesNo, FieldType::YesNo);
        case MDB_BYTE:
            return typed(ValueKind::Byte, FieldType::Byte);
        case MDB_INT:
            return typed(ValueKind::Integer, FieldType::Integer);
        case MDB_LONGINT:
            return typed(ValueKind::Long,
                         column->is_long_auto ? FieldType::Counter : FieldType::Long);
        case MDB_COMPLEX:
            return typed(ValueKind::Long, FieldType::Long);
        case MDB_MONEY:
            return typed(ValueKind::Currency, FieldType::Currency);
        case MDB_FLOAT:
            return typed(ValueKind::Single, FieldType::Single);
        case MDB_DOUBLE:
            return typed(ValueKind::Double, FieldType::Double);
        case MDB_NUMERIC:
            return typed(ValueKind::Printed, FieldType::Double);
        case MDB_DATETIME:
            return typed(ValueKind::Date, FieldType::Date);
        case MDB_TEXT:
            return typed(ValueKind::Text, FieldType::Text, textLength(mdb, column));
        case MDB_MEMO:
            return typed(ValueKind::Memo, FieldType::Memo);
        case MDB_REPID:
            return typed(ValueKind::Printed, FieldType::Text, kReplicationIdLength);
        case MDB_BINARY:
            return binary(ValueKind::Binary, QStringLiteral("BINARY(%1)").arg(column->col_size));
        case MDB_OLE:
            return binary(ValueKind::Ole, QStringLiteral("LONGBINARY"));
        default:
            return typed(ValueKind::Printed, FieldType::Text);
    }
}

}  // namespace

ColumnPlan planColumn(const MdbHandle* mdb, const MdbColumn* column) {
    ColumnPlan plan = planByType(mdb, column);
    plan.definition.name = QString::fromUtf8(column->name);
    return plan;
}

}  // namespace mdbread
