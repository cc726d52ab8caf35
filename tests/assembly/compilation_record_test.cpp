// One compilation by its id: its stored values, and its deletion with its tracks.
#include "assembly/compilation_record.h"
#include "engine/jet_error.h"
#include "picker_fixture.h"

namespace {

using assembly::deleteCompilation;
using assembly::readCompilation;

// The sums are read as stored, not counted from the tracks.
TEST_F(PickerTest, ACompilationIsReadAndDeletedWithItsTracksInOneStep) {
    add(1, "A");
    add(1, "B");
    add(2, "C");
    database.close();
    testsupport::execRaw(path,
                         "UPDATE Compilation SET Format = 'CD-R', C_Length = 80, SumTrack "
                         "= 7, SumTime = 999 WHERE CompilationID_P = 3");
    const assembly::CompilationRecord read = readCompilation(open(), 3);
    EXPECT_EQ(QStringList({QString::number(read.id), read.name, read.format}),
              QStringList({"3", "Old Friends", "CD-R"}));
    EXPECT_EQ(QList<qint64>({read.lengthMinutes, read.stored.trackCount, read.stored.totalTime}),
              QList<qint64>({80, 7, 999}));

    testsupport::execRaw(path,
                         "CREATE TRIGGER kept BEFORE DELETE ON Compilation WHEN "
                         "OLD.CompilationID_P = 1 BEGIN SELECT RAISE(ABORT, 'kept'); END");
    EXPECT_NE(testsupport::errorNumber([&] { deleteCompilation(database, 1); }), 0);
    deleteCompilation(database, 2);
    EXPECT_EQ(testsupport::errorNumber([&] { readCompilation(database, 2); }),
              engine::jet::kNoCurrentRecord);
    const QStringList counts = testsupport::rowCounts(path);
    EXPECT_EQ(testsupport::errorNumber([&] { deleteCompilation(database, 2); }),
              engine::jet::kNoCurrentRecord);
    EXPECT_EQ(testsupport::rowCounts(path), counts);
    EXPECT_EQ(tracksOf(1) + " " + storedSums(1), "1:A 2:B 2/120");
    EXPECT_EQ(tracksOf(2), "");
    EXPECT_EQ(testsupport::rowCounts(path)[0], "Compilation=2");
}

}  // namespace
