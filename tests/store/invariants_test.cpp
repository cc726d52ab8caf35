#include <gtest/gtest.h>

#include "engine/database.h"
#include "engine/workspace.h"
#include "store/compilation_invariants.h"
#include "support/databases.h"
#include "support/samples.h"
#include "support/temp_dir.h"

namespace {

struct BrokenFile {
    const char* what;
    const char* breakIt;  // SQL run past the engine on a file of two sound compilations
    QStringList reported;
    QStringList repaired;
};

const QString kA = QStringLiteral("Compilation 'A'");

// Each way a file can break what the program keeps true: the check names it, the repair mends
// it and says so, and a second check finds nothing.
TEST(CompilationInvariants, EachBrokenRuleIsReportedThenMended) {
    const BrokenFile cases[] = {
        {"sound", "", {}, {}},
        {"Null count of an empty compilation",
         "UPDATE Compilation SET SumTrack = NULL WHERE Name = 'B'",
         {"Compilation 'B': SumTrack is Null, but it has 0 track(s)."},
         {"Compilation 'B': SumTrack set from Null to 0."}},
        {"Null time of an empty compilation",
         "UPDATE Compilation SET SumTime = NULL WHERE Name = 'B'",
         {"Compilation 'B': SumTime is Null, but its tracks last 0 second(s)."},
         {"Compilation 'B': SumTime set from Null to 0."}},
        {"time not updated",
         "UPDATE CompilationTrack SET Length = 61 WHERE TrackNo = 2",
         {kA + ": SumTime is 320, but its tracks last 321 second(s)."},
         {kA + ": SumTime set from 320 to 321."}},
        {"numbers with a gap",
         "UPDATE CompilationTrack SET TrackNo = 5 WHERE TrackNo = 2",
         {kA + ": tracks are numbered 1, 5, not 1 to 2."},
         {kA + ": tracks renumbered 1 to 2 (were 1, 5)."}},
        {"Null number",
         "UPDATE CompilationTrack SET TrackNo = NULL WHERE TrackNo = 2",
         {kA + ": tracks are numbered Null, 1, not 1 to 2."},
         {kA + ": tracks renumbered 1 to 2 (were Null, 1)."}},
        {"tracks without a compilation",
         "PRAGMA foreign_keys = OFF; UPDATE CompilationTrack SET CompilationID_F1 = 9",
         {kA + ": SumTrack is 2, but it has 0 track(s).",
          kA + ": SumTime is 320, but its tracks last 0 second(s).",
          "2 track(s) belong to compilation 9, which does not exist."},
         {kA + ": SumTrack set from 2 to 0.", kA + ": SumTime set from 320 to 0.",
          "Removed 2 track(s) of compilation 9, which does not exist."}},
    };
    for (const BrokenFile& c : cases) {
        SCOPED_TRACE(c.what);
        testsupport::TempDir dir;
        const QString path = dir.file("coll.mdb");
        testsupport::createCompilationDatabase(path);
        testsupport::addSample(
            path, {.name = "A",
                   .tracks = {{.title = "One", .seconds = 260}, {.title = "Two", .seconds = 60}}});
        testsupport::addSample(path, {.name = "B"});
        if (*c.breakIt)
            testsupport::execRaw(path, c.breakIt);
        engine::Database database = engine::Workspace::defaultWorkspace().openDatabase(path);
        EXPECT_EQ(store::checkCompilationInvariants(database, store::InvariantAction::Report),
                  c.reported);
        EXPECT_EQ(store::checkCompilationInvariants(database, store::InvariantAction::Repair),
                  c.repaired);
        EXPECT_EQ(store::checkCompilationInvariants(database, store::InvariantAction::Report),
                  QStringList());
        engine::Workspace::defaultWorkspace().close();
    }
}

}  // namespace
