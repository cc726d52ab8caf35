#include "support/databases.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <QFile>
#include <stdexcept>

#include "engine/jet_dialect.h"

namespace testsupport {

namespace {

class RawConnection {
  public:
    explicit RawConnection(const QString& path) {
        if (sqlite3_open(path.toUtf8().constData(), &db_) != SQLITE_OK) {
            throw std::runtime_error("cannot open " + path.toStdString());
        }
        // The engine's text order, so indexes built here agree with the engine's.
        engine::registerJetFunctions(db_);
    }
    ~RawConnection() { sqlite3_close(db_); }
    sqlite3* db() const { return db_; }

  private:
    sqlite3* db_ = nullptr;
};

}  // namespace

void createCompilationDatabase(const QString& path) {
    QFile schema(QStringLiteral(MIXORAMA_SOURCE_DIR "/resources/template.sql"));
    if (!schema.open(QIODevice::ReadOnly)) {
        throw std::runtime_error("template.sql not found");
    }
    execRaw(path, QString::fromUtf8(schema.readAll()));
}

void execRaw(const QString& path, const QString& sql) {
    RawConnection connection(path);
    char* error = nullptr;
    if (sqlite3_exec(connection.db(), sql.toUtf8().constData(), nullptr, nullptr, &error) !=
        SQLITE_OK) {
        const std::string message = error ? error : "unknown error";
        sqlite3_free(error);
        throw std::runtime_error(message);
    }
}

QString queryRaw(const QString& path, const QString& sql) {
    RawConnection connection(path);
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(connection.db(), sql.toUtf8().constData(), -1, &statement, nullptr) !=
        SQLITE_OK) {
        throw std::runtime_error(sqlite3_errmsg(connection.db()));
    }
    QString result;
    if (sqlite3_step(statement) == SQLITE_ROW) {
        result =
            QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, 0)));
    }
    sqlite3_finalize(statement);
    return result;
}

QString integrityCheck(const QString& path) {
    return queryRaw(path, "PRAGMA integrity_check");
}

}  // namespace testsupport
