// Makes the compilation database template from its schema file. The schema declares the text
// columns with the engine's own collation, which only a connection with the engine's functions
// installed can create.
#include <sqlite3.h>

#include <QFile>
#include <cstdio>

#include "engine/jet_dialect.h"

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: make-template SCHEMA.sql OUT.mdb\n");
        return 2;
    }
    QFile schema(QString::fromLocal8Bit(argv[1]));
    if (!schema.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "make-template: cannot read %s\n", argv[1]);
        return 1;
    }
    QFile::remove(QString::fromLocal8Bit(argv[2]));
    sqlite3* db = nullptr;
    if (sqlite3_open(argv[2], &db) != SQLITE_OK) {
        std::fprintf(stderr, "make-template: cannot create %s\n", argv[2]);
        sqlite3_close(db);
        return 1;
    }
    engine::registerJetFunctions(db);
    char* error = nullptr;
    const int rc = sqlite3_exec(db, schema.readAll().constData(), nullptr, nullptr, &error);
    if (rc != SQLITE_OK) {
        std::fprintf(stderr, "make-template: %s\n", error != nullptr ? error : "failed");
        sqlite3_free(error);
    }
    sqlite3_close(db);
    if (rc != SQLITE_OK) {
        QFile::remove(QString::fromLocal8Bit(argv[2]));
        return 1;
    }
    return 0;
}
