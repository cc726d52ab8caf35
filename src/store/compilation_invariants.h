#pragma once

#include <QStringList>
#include <QtGlobal>

namespace engine {
class Database;
}

// What the compilation database keeps true of every compilation: SumTrack is the count of its
// tracks, SumTime the sum of their Length (Null counting 0), its tracks are numbered 1 to n
// without gaps or twins, and every track belongs to a compilation. The program keeps them with
// every change; a file written by another program, or by an earlier version, may break them.
namespace store {

enum class InvariantAction {
    Report,  // only say what is broken
    Repair,  // mend it, in one transaction, and say what changed
};

// Checks every compilation. Returns one line per problem, naming the compilation (a track
// without a compilation names the compilation id it refers to); no lines when all is well.
// With Repair the tracks are renumbered 1 to n in their order (Null numbers first), the sums
// are stored again and tracks without a compilation are removed, and each line says what was
// changed. Throws JetError; a failed repair changes nothing.
QStringList checkCompilationInvariants(engine::Database& database, InvariantAction action);

// Numbers a compilation's tracks 1, 2, 3 ... in their present order (Null numbers first); rows
// already right stay untouched.
void renumberTracks(engine::Database& database, qint64 compilationId);

}  // namespace store
