#include "support/sqlite_rows.h"

#include <sqlite3.h>

#include "engine/jet_dialect.h"

namespace {

QVariant columnValue(sqlite3_stmt* statement, int column) {
    switch (sqlite3_column_type(statement, column)) {
        case SQLITE_INTEGER:
            return QVariant(qint64(sqlite3_column_int64(statement, column)));
        case SQLITE_FLOAT:
            return QVariant(sqlite3_column_double(statement, column));
        case SQLITE_TEXT:
            return QString::fromUtf8(
                reinterpret_cast<const char*>(sqlite3_column_text(statement, column)),
                sqlite3_column_bytes(statement, column));
        case SQLITE_BLOB:
            return QByteArray(static_cast<const char*>(sqlite3_column_blob(statement, column)),
                              sqlite3_column_bytes(statement, column));
        default:
            return QVariant();
    }
}

}  // namespace

QList<QVariantList> sqliteRows(const QString& file, const QString& sql) {
    sqlite3* db = nullptr;
    QList<QVariantList> rows;
    if (sqlite3_open_v2(file.toUtf8().constData(), &db, SQLITE_OPEN_READONLY, nullptr) !=
        SQLITE_OK) {
        sqlite3_close(db);
        return rows;
    }
    engine::registerJetFunctions(db);
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(db, sql.toUtf8().constData(), -1, &statement, nullptr) == SQLITE_OK) {
        while (sqlite3_step(statement) == SQLITE_ROW) {
            QVariantList row;
            for (int i = 0; i < sqlite3_column_count(statement); ++i)
                row << columnValue(statement, i);
            rows << row;
        }
    }
    sqlite3_finalize(statement);
    sqlite3_close(db);
    return rows;
}
