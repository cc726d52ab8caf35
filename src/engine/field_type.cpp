#include "engine/field_type.h"

namespace engine {

QString declaredType(FieldType type, int size) {
    switch (type) {
        case FieldType::Text:
            return size > 0 ? QStringLiteral("TEXT(%1)").arg(size) : QStringLiteral("TEXT(255)");
        case FieldType::Memo:
            return QStringLiteral("LONGTEXT");
        case FieldType::Byte:
            return QStringLiteral("TINYINT");
        case FieldType::Integer:
            return QStringLiteral("SMALLINT");
        case FieldType::Long:
            return QStringLiteral("INTEGER");
        case FieldType::Counter:
            return QStringLiteral("INTEGER");
        case FieldType::Single:
            return QStringLiteral("REAL");
        case FieldType::Double:
            return QStringLiteral("DOUBLE");
        case FieldType::Currency:
            return QStringLiteral("CURRENCY");
        case FieldType::Date:
            return QStringLiteral("DATETIME");
        case FieldType::YesNo:
            return QStringLiteral("YESNO");
    }
    return QStringLiteral("TEXT(255)");
}

FieldType fieldTypeFromDeclared(const QString& declared) {
    const QString t = declared.trimmed().toUpper();
    if (t.startsWith(QLatin1String("LONGTEXT")) || t == QLatin1String("MEMO"))
        return FieldType::Memo;
    if (t.startsWith(QLatin1String("TEXT")) || t.startsWith(QLatin1String("VARCHAR")) ||
        t.startsWith(QLatin1String("CHAR")))
        return FieldType::Text;
    if (t == QLatin1String("TINYINT") || t == QLatin1String("BYTE"))
        return FieldType::Byte;
    if (t == QLatin1String("SMALLINT") || t == QLatin1String("SHORT"))
        return FieldType::Integer;
    if (t.startsWith(QLatin1String("INT")) || t == QLatin1String("LONG") ||
        t == QLatin1String("COUNTER") || t == QLatin1String("BIGINT"))
        return FieldType::Long;
    if (t == QLatin1String("REAL") || t == QLatin1String("SINGLE") || t == QLatin1String("FLOAT"))
        return FieldType::Single;
    if (t.startsWith(QLatin1String("DOUB")) || t == QLatin1String("NUMERIC") ||
        t == QLatin1String("NUM"))
        return FieldType::Double;
    if (t == QLatin1String("CURRENCY") || t == QLatin1String("MONEY"))
        return FieldType::Currency;
    if (t.startsWith(QLatin1String("DATE")))
        return FieldType::Date;
    if (t == QLatin1String("YESNO") || t == QLatin1String("BIT") || t == QLatin1String("BOOLEAN"))
        return FieldType::YesNo;
    return FieldType::Text;
}

bool isTextType(FieldType type) {
    return type == FieldType::Text || type == FieldType::Memo;
}

}  // namespace engine
