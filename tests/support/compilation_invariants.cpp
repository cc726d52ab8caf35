#include "support/compilation_invariants.h"

#include "support/databases.h"

namespace testsupport {

int brokenCompilations(const QString& path) {
    return queryRaw(
               path,
               "SELECT count(*) FROM Compilation c WHERE "
               "SumTrack IS NOT (SELECT count(*) FROM CompilationTrack WHERE "
               "CompilationID_F1 = c.CompilationID_P) OR "
               "SumTime IS NOT (SELECT coalesce(sum(Length), 0) FROM CompilationTrack WHERE "
               "CompilationID_F1 = c.CompilationID_P) OR "
               "(SELECT count(DISTINCT TrackNo) FROM CompilationTrack WHERE CompilationID_F1 = "
               "c.CompilationID_P AND TrackNo BETWEEN 1 AND c.SumTrack) IS NOT c.SumTrack")
        .toInt();
}

}  // namespace testsupport
