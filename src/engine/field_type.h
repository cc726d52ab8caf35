#pragma once

#include <QString>

namespace engine {

// Column types as the Access engine knows them. In the SQLite file they are kept as the
// declared column type, chosen so that SQLite's affinity rules store each kind correctly.
enum class FieldType {
    Text,
    Memo,
    Byte,
    Integer,
    Long,
    Counter,
    Single,
    Double,
    Currency,
    Date,
    YesNo
};

// Declared SQLite type for a field type; text sizes give "TEXT(n)".
QString declaredType(FieldType type, int size = 0);
// Field type of a declared column type; unknown or empty declarations read as Text.
FieldType fieldTypeFromDeclared(const QString& declared);
bool isTextType(FieldType type);

}  // namespace engine
