#pragma once

#include <sqlite3.h>

#include <QDir>
#include <QFile>
#include <QString>
#include <stdexcept>
#include <string>

#include "engine/jet_dialect.h"

// Compilation databases for the benchmarks, written past the engine (with its text order) so
// that making one is not what is measured.
namespace bench {

inline void execRaw(const QString& path, const QString& sql) {
    sqlite3* db = nullptr;
    sqlite3_open(path.toUtf8().constData(), &db);
    engine::registerJetFunctions(db);
    char* error = nullptr;
    const int rc = sqlite3_exec(db, sql.toUtf8().constData(), nullptr, nullptr, &error);
    const std::string message = error ? error : "";
    sqlite3_free(error);
    sqlite3_close(db);
    if (rc != SQLITE_OK)
        throw std::runtime_error(message);
}

// A new file in folder made from the template's schema, then filled by fillSql.
inline QString makeFilledDatabase(const QString& folder, const QString& name, const char* fillSql) {
    QDir().mkpath(folder);
    const QString path = QDir(folder).filePath(name);
    QFile::remove(path);
    QFile schema(QStringLiteral(MIXORAMA_SOURCE_DIR "/resources/template.sql"));
    if (!schema.open(QIODevice::ReadOnly))
        throw std::runtime_error("template.sql not found");
    execRaw(path, QString::fromUtf8(schema.readAll()));
    execRaw(path, QString::fromLatin1(fillSql));
    return path;
}

}  // namespace bench
