#include "engine/sqlite_statement.h"

#include <sqlite3.h>

#include <cctype>

#include <QDate>
#include <QDateTime>

#include "engine/connection_tables.h"
#include "engine/jet_dialect.h"
#include "engine/jet_error.h"

namespace engine {

namespace {

QString firstQuoted(const QString& message, const QString& after) {
    const int at = message.indexOf(after);
    return at < 0 ? QString() : message.mid(at + after.size()).trimmed();
}

JetError inputTableNotFound(const QString& table) {
    return JetError(jet::kCannotFindInputTable,
                    QStringLiteral("The Microsoft Jet database engine cannot find the input table "
                                   "or query '%1'. Make sure it exists and that its name is "
                                   "spelled correctly.")
                        .arg(table));
}

JetError translateError(int rc, const QString& message, const QString& context) {
    const int primary = rc & 0xff;
    if (rc == SQLITE_READONLY_DBMOVED) {
        // Written on, the old file would take the change away with it.
        return JetError(jet::kDiskError,
                        QStringLiteral("Disk or network error. The database '%1' was replaced, "
                                       "moved or deleted while it was open here, so the change "
                                       "was not stored. Close the database and open it again.")
                            .arg(context));
    }
    if (rc == SQLITE_CONSTRAINT_UNIQUE || rc == SQLITE_CONSTRAINT_PRIMARYKEY) {
        return JetError(
            jet::kDuplicateValue,
            QStringLiteral("The changes you requested to the table were not successful "
                           "because they would create duplicate values in the index, "
                           "primary key, or relationship. Change the data in the field "
                           "or fields that contain duplicate data, remove the index, or "
                           "redefine the index to permit duplicate entries and try "
                           "again."));
    }
    if (rc == SQLITE_CONSTRAINT_NOTNULL) {
        const QString field = firstQuoted(message, QStringLiteral("failed:")).section('.', -1);
        return JetError(jet::kFieldRequired,
                        QStringLiteral("The field '%1' cannot contain a Null value because the "
                                       "Required property for this field is set to True. Enter a "
                                       "value in this field.")
                            .arg(field));
    }
    if (message.startsWith(QLatin1String("no such table:"))) {
        QString table = firstQuoted(message, QStringLiteral("no such table:"));
        return inputTableNotFound(table.section('.', -1));
    }
    if (primary == SQLITE_AUTH) {
        // Only the guard of the connection tables refuses: this connection has not made it.
        return inputTableNotFound(refusedConnectionTable());
    }
    if (message.startsWith(QLatin1String("no such column:"))) {
        return JetError(jet::kTooFewParameters,
                        QStringLiteral("Too few parameters. Expected 1. (%1)").arg(message));
    }
    // SQLite's own limits on nesting, reached below the translator's.
    if (message == QLatin1String("parser stack overflow") ||
        message.startsWith(QLatin1String("Expression tree is too large"))) {
        return queryTooComplexError();
    }
    if (message.contains(QLatin1String("already exists"))) {
        return JetError(jet::kTableExists, message);
    }
    switch (primary) {
        case SQLITE_NOTADB:
        case SQLITE_CORRUPT:
            return JetError(jet::kNotADatabase,
                            QStringLiteral("Unrecognized database format '%1'.").arg(context));
        case SQLITE_CANTOPEN:
            return JetError(jet::kFileNotFound,
                            QStringLiteral("Could not find file '%1'.").arg(context));
        case SQLITE_READONLY:
            return JetError(jet::kReadOnly,
                            QStringLiteral("Cannot update. Database or object is read-only."));
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            return JetError(jet::kLocked, QStringLiteral("Could not update; currently locked."));
        case SQLITE_FULL:
        case SQLITE_IOERR:
            return JetError(jet::kDiskError,
                            QStringLiteral("Disk or network error. (%1)").arg(message));
        case SQLITE_CONSTRAINT:
            return JetError(jet::kDuplicateValue, message);
        case SQLITE_ERROR:
            return JetError(jet::kSyntaxError,
                            QStringLiteral("Syntax error in query. (%1)").arg(message));
        default:
            return JetError(jet::kGeneral, message);
    }
}

// Whether the text after a prepared statement holds no second one: only blanks and ";".
bool onlySeparators(const char* from, const char* end) {
    for (const char* c = from; c != nullptr && c < end; ++c) {
        if (*c != ';' && !std::isspace(static_cast<unsigned char>(*c))) {
            return false;
        }
    }
    return true;
}

}  // namespace

void throwSqliteError(sqlite3* db, int rc, const QString& context) {
    const int extended = db != nullptr ? sqlite3_extended_errcode(db) : rc;
    const QString message = db != nullptr ? QString::fromUtf8(sqlite3_errmsg(db))
                                          : QString::fromUtf8(sqlite3_errstr(rc));
    const int code = extended != 0 ? extended : rc;
    if (code == SQLITE_READONLY_DBMOVED && context.isEmpty() && db != nullptr) {
        throw translateError(code, message, QString::fromUtf8(sqlite3_db_filename(db, "main")));
    }
    throw translateError(code, message, context);
}

void execSqlite(sqlite3* db, const QString& sql) {
    Statement(db, sql).exec();
}

QString reindexAndCheck(sqlite3* db) {
    execSqlite(db, QStringLiteral("REINDEX"));
    Statement check(db, QStringLiteral("PRAGMA integrity_check"));
    return check.step() ? check.text(0) : QStringLiteral("no answer from the integrity check");
}

QString quoteName(const QString& name) {
    QString quoted = name;
    quoted.replace(QLatin1Char('"'), QLatin1String("\"\""));
    return QLatin1Char('"') + quoted + QLatin1Char('"');
}

Statement::Statement(sqlite3* db, const QString& sql) : db_(db) {
    const QByteArray utf8 = sql.toUtf8();
    const char* tail = nullptr;
    const int rc =
        sqlite3_prepare_v2(db, utf8.constData(), static_cast<int>(utf8.size()), &stmt_, &tail);
    if (rc != SQLITE_OK) {
        throwSqliteError(db, rc);
    }
    if (stmt_ == nullptr) {
        throw JetError(jet::kSyntaxError, QStringLiteral("Empty statement."));
    }
    if (!onlySeparators(tail, utf8.constData() + utf8.size())) {
        // The destructor does not run for a constructor that throws.
        sqlite3_finalize(stmt_);
        throw charactersAfterEndError();
    }
}

Statement::~Statement() {
    sqlite3_finalize(stmt_);
}

void Statement::bind(int index, const QVariant& value) {
    int rc = SQLITE_OK;
    if (!value.isValid() || value.isNull()) {
        rc = sqlite3_bind_null(stmt_, index);
    } else {
        switch (value.typeId()) {
            case QMetaType::Bool:
                rc = sqlite3_bind_int(stmt_, index, value.toBool() ? -1 : 0);
                break;
            case QMetaType::Int:
            case QMetaType::UInt:
            case QMetaType::Short:
            case QMetaType::UShort:
            case QMetaType::LongLong:
            case QMetaType::ULongLong:
            case QMetaType::Long:
                rc = sqlite3_bind_int64(stmt_, index, value.toLongLong());
                break;
            case QMetaType::Double:
            case QMetaType::Float:
                rc = sqlite3_bind_double(stmt_, index, value.toDouble());
                break;
            case QMetaType::QDate: {
                const QByteArray text = isoDateText(value.toDate()).toUtf8();
                rc = sqlite3_bind_text(stmt_, index, text.constData(),
                                       static_cast<int>(text.size()), SQLITE_TRANSIENT);
                break;
            }
            case QMetaType::QDateTime: {
                const QByteArray text = isoDateText(value.toDateTime()).toUtf8();
                rc = sqlite3_bind_text(stmt_, index, text.constData(),
                                       static_cast<int>(text.size()), SQLITE_TRANSIENT);
                break;
            }
            default: {
                const QByteArray text = value.toString().toUtf8();
                rc = sqlite3_bind_text(stmt_, index, text.constData(),
                                       static_cast<int>(text.size()), SQLITE_TRANSIENT);
            }
        }
    }
    if (rc != SQLITE_OK) {
        throwSqliteError(db_, rc);
    }
}

bool Statement::step() {
    const int rc = sqlite3_step(stmt_);
    if (rc == SQLITE_ROW) {
        return true;
    }
    if (rc == SQLITE_DONE) {
        return false;
    }
    const int extended = sqlite3_extended_errcode(db_);
    sqlite3_reset(stmt_);
    throwSqliteError(db_, extended != 0 ? extended : rc);
}

void Statement::reset() {
    sqlite3_reset(stmt_);
    sqlite3_clear_bindings(stmt_);
}

void Statement::exec() {
    while (step()) {
    }
}

int Statement::columnCount() const {
    return sqlite3_column_count(stmt_);
}

static QString fromUtf8(const char* text) {
    return text ? QString::fromUtf8(text) : QString();
}

QString Statement::columnName(int column) const {
    const QString name = fromUtf8(sqlite3_column_name(stmt_, column));
    // SQLite runs a bracketed join as a subquery and numbers the repeated names in it
    // ("TrackID:1"); the statement itself named the column plainly.
    const qsizetype colon = name.lastIndexOf(QLatin1Char(':'));
    if (colon > 0 && name.left(colon) == columnOriginName(column)) {
        return name.left(colon);
    }
    return name;
}
QString Statement::columnDeclaredType(int column) const {
    return fromUtf8(sqlite3_column_decltype(stmt_, column));
}
QString Statement::columnOriginTable(int column) const {
    return fromUtf8(sqlite3_column_table_name(stmt_, column));
}
QString Statement::columnOriginName(int column) const {
    return fromUtf8(sqlite3_column_origin_name(stmt_, column));
}
QString Statement::columnDatabase(int column) const {
    return fromUtf8(sqlite3_column_database_name(stmt_, column));
}
bool Statement::isNull(int column) const {
    return sqlite3_column_type(stmt_, column) == SQLITE_NULL;
}
qint64 Statement::int64(int column) const {
    return sqlite3_column_int64(stmt_, column);
}

QString Statement::text(int column) const {
    const auto* data = reinterpret_cast<const char*>(sqlite3_column_text(stmt_, column));
    return QString::fromUtf8(data, sqlite3_column_bytes(stmt_, column));
}

QVariant Statement::rawValue(int column) const {
    switch (sqlite3_column_type(stmt_, column)) {
        case SQLITE_NULL:
            return QVariant();
        case SQLITE_INTEGER:
            return QVariant(static_cast<qlonglong>(int64(column)));
        case SQLITE_FLOAT:
            return QVariant(sqlite3_column_double(stmt_, column));
        default:
            return QVariant(text(column));
    }
}

namespace {

// Dates are kept as ISO text; a number is read as days since 30 December 1899, as Access counts.
QVariant readDate(const QVariant& raw) {
    if (raw.typeId() == QMetaType::QString) {
        const QString text = raw.toString();
        if (text.size() <= 10) {
            const QDate date = QDate::fromString(text, Qt::ISODate);
            return date.isValid() ? QVariant(date) : raw;
        }
        QDateTime stamp = QDateTime::fromString(text, QStringLiteral("yyyy-MM-dd HH:mm:ss"));
        if (!stamp.isValid()) {
            stamp = QDateTime::fromString(text, Qt::ISODate);
        }
        return stamp.isValid() ? QVariant(stamp) : raw;
    }
    const double days = raw.toDouble();
    const QDateTime base(QDate(1899, 12, 30), QTime(0, 0));
    const QDateTime stamp = base.addMSecs(static_cast<qint64>(days * 86400000.0 + 0.5));
    return stamp.time() == QTime(0, 0) ? QVariant(stamp.date()) : QVariant(stamp);
}

}  // namespace

QVariant Statement::value(int column, FieldType type) const {
    const QVariant raw = rawValue(column);
    if (raw.isNull()) {
        return raw;
    }
    switch (type) {
        case FieldType::YesNo:
            return QVariant(raw.toLongLong() != 0);
        case FieldType::Date:
            return readDate(raw);
        case FieldType::Byte:
        case FieldType::Integer:
        case FieldType::Long:
        case FieldType::Counter:
            if (raw.typeId() == QMetaType::LongLong) {
                const qlonglong v = raw.toLongLong();
                return (v >= INT_MIN && v <= INT_MAX) ? QVariant(static_cast<int>(v)) : raw;
            }
            return raw;
        case FieldType::Single:
        case FieldType::Double:
        case FieldType::Currency:
            return raw.typeId() == QMetaType::QString ? raw : QVariant(raw.toDouble());
        case FieldType::Text:
        case FieldType::Memo:
            return raw.typeId() == QMetaType::QString ? raw : QVariant(raw.toString());
    }
    return raw;
}

namespace {

JetError conversionError() {
    return JetError(jet::kConversionError, QStringLiteral("Data type conversion error."));
}

// A value for a number column: numbers as they are, yes/no as -1/0, texts that read as numbers.
double numberOf(const QVariant& value) {
    if (value.typeId() == QMetaType::Bool) {
        return value.toBool() ? -1.0 : 0.0;
    }
    if (value.typeId() != QMetaType::QString) {
        return value.toDouble();
    }
    bool ok = false;
    const double number = value.toString().trimmed().toDouble(&ok);
    if (!ok) {
        throw conversionError();
    }
    return number;
}

}  // namespace

QVariant coerceForField(const QVariant& value, FieldType type) {
    if (!value.isValid() || value.isNull()) {
        return QVariant();
    }
    switch (type) {
        case FieldType::Text:
        case FieldType::Memo:
            if (value.typeId() == QMetaType::Bool) {
                return value.toBool() ? QStringLiteral("True") : QStringLiteral("False");
            }
            return value.toString();
        case FieldType::YesNo: {
            const QString word = value.toString().trimmed().toLower();
            if (word == QLatin1String("true") || word == QLatin1String("yes"))
                return true;
            if (word == QLatin1String("false") || word == QLatin1String("no"))
                return false;
            return numberOf(value) != 0;
        }
        case FieldType::Date: {
            if (value.typeId() == QMetaType::QDate || value.typeId() == QMetaType::QDateTime) {
                return value;
            }
            const QVariant date = readDate(value);
            if (date.typeId() != QMetaType::QDate && date.typeId() != QMetaType::QDateTime) {
                throw conversionError();
            }
            return date;
        }
        case FieldType::Byte:
        case FieldType::Integer:
        case FieldType::Long:
        case FieldType::Counter:
            return static_cast<qlonglong>(std::nearbyint(numberOf(value)));
        case FieldType::Single:
        case FieldType::Double:
        case FieldType::Currency:
            return numberOf(value);
    }
    return value;
}

}  // namespace engine
