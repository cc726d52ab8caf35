#pragma once

#include <sqlite3.h>

#include <QString>
#include <QVariant>
#include <optional>

// Conversions between SQLite function arguments and Qt values, shared by the Jet functions.
namespace engine::sqlvalue {

inline bool isNull(sqlite3_value* v) {
    return sqlite3_value_type(v) == SQLITE_NULL;
}

inline QString text(sqlite3_value* v) {
    const auto* data = reinterpret_cast<const char*>(sqlite3_value_text(v));
    return QString::fromUtf8(data, sqlite3_value_bytes(v));
}

// The number of an integer, a real or a text that reads as a number (blanks around allowed).
inline std::optional<double> number(sqlite3_value* v) {
    switch (sqlite3_value_type(v)) {
        case SQLITE_INTEGER:
            return double(sqlite3_value_int64(v));
        case SQLITE_FLOAT:
            return sqlite3_value_double(v);
        case SQLITE_TEXT: {
            bool ok = false;
            const double d = text(v).trimmed().toDouble(&ok);
            if (ok)
                return d;
            return std::nullopt;
        }
        default:
            return std::nullopt;
    }
}

inline QVariant variant(sqlite3_value* v) {
    switch (sqlite3_value_type(v)) {
        case SQLITE_INTEGER:
            return QVariant(qlonglong(sqlite3_value_int64(v)));
        case SQLITE_FLOAT:
            return QVariant(sqlite3_value_double(v));
        case SQLITE_TEXT:
            return QVariant(text(v));
        case SQLITE_BLOB:
            return QVariant(QByteArray(static_cast<const char*>(sqlite3_value_blob(v)),
                                       sqlite3_value_bytes(v)));
        default:
            return QVariant();
    }
}

inline void resultText(sqlite3_context* ctx, const QString& value) {
    const QByteArray utf8 = value.toUtf8();
    sqlite3_result_text(ctx, utf8.constData(), int(utf8.size()), SQLITE_TRANSIENT);
}

// A whole number as an integer, anything else as a real.
inline void resultNumber(sqlite3_context* ctx, double value) {
    if (value > -9.2e18 && value < 9.2e18 && value == double(qint64(value))) {
        sqlite3_result_int64(ctx, qint64(value));
    } else {
        sqlite3_result_double(ctx, value);
    }
}

}  // namespace engine::sqlvalue
