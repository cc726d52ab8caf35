#pragma once

#include <QString>

#include "engine/database.h"
#include "store/album_source.h"

namespace shell {

// The values the whole application shares: the open compilation database and what the windows
// read from each other. One instance lives with the main window; windows get it passed in.
struct AppState {
    QString databasePath;          // gDatabasePath
    engine::Database database;     // gDatabase
    QString inputHint;             // gInputHint
    QString gotoField;             // gGotoField, the compilation lists' goto field
    int gotoCountCompilation = 0;  // entries in the compilation goto list
    QString sourceGotoField;       // gSourceGotoField
    QString filterClause;
    QString sortClause;
    QString clausesAlbumPath;  // the album database the two clauses were made for
    store::AlbumSourceState album;
};

inline const QString kInputHint = QStringLiteral("Time as: HHMMSS    Date as: DD.MM.YY");

}  // namespace shell
