#pragma once

#include <QString>
#include <QtGlobal>

#include "assembly/track_picker.h"

namespace engine {
class Database;
}

// One compilation as the windows and the command line read it by its id, and its deletion.
namespace assembly {

struct CompilationRecord {
    qint64 id = 0;
    QString name;
    QString format;
    int lengthMinutes = 0;  // C_Length
    TrackSums stored;       // SumTrack and SumTime as the file holds them
};

// Throws JetError 3021 when there is no such compilation.
CompilationRecord readCompilation(engine::Database& database, qint64 compilationId);

// The question asked before a compilation is deleted.
inline const QString kDeleteCompilationQuestion =
    QStringLiteral("Delete compilation. Are you sure?");

// Deletes the compilation with its tracks, in one transaction. Throws JetError 3021 (nothing
// changed) when there is no such compilation.
void deleteCompilation(engine::Database& database, qint64 compilationId);

}  // namespace assembly
