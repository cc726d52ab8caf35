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

// The collation every text column is declared with: the engine's own text order
// (jet_collation.h), under a name of its own. A program without it cannot write such a column
// (SQLite refuses with "no such collation sequence") and so cannot put an index out of order;
// it can still read the rows.
inline constexpr char kTextCollation[] = "MIXORAMA_TEXT";
// " COLLATE MIXORAMA_TEXT", appended to the declaration of a text column.
inline QString textCollationClause() {
    return QStringLiteral(" COLLATE ") + QLatin1String(kTextCollation);
}

}  // namespace engine
