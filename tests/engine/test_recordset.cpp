#include "engine_fixture.h"

using engine::Recordset;

namespace {

const char* kCompilations =
    "SELECT Compilation.Name AS C_Name, Compilation.SumTrack AS C_SumTrack, "
    "Compilation.SumTime AS C_SumTime, Compilation.RecDate AS RecDate, Compilation.Box AS C_Box, "
    "Compilation.CompilationID_P FROM Compilation ORDER BY Compilation.Name";

}  // namespace

using RecordsetMoves = EngineFixture;

TEST_F(RecordsetMoves, WalksBothWaysAndStopsPastTheEnds) {
    Recordset rows = db.openRecordset(kCompilations);
    ASSERT_EQ(rows.recordCount(), 4);
    // Text sorts without regard to case, accented letters beside their base letter.
    EXPECT_EQ(column(rows, "C_Name"),
              QStringList({"abba hits", "Ärzte Live", "Beatles Best", "Zappa"}));
    rows.moveLast();
    EXPECT_EQ(rows.value("c_name").toString(), "Zappa");
    rows.moveNext();
    EXPECT_TRUE(rows.eof());
    EXPECT_EQ(errorNumber([&] { rows.moveNext(); }), engine::jet::kNoCurrentRecord);
    rows.movePrevious();
    EXPECT_EQ(rows.absolutePosition(), 3);
    rows.moveFirst();
    rows.movePrevious();
    EXPECT_TRUE(rows.bof());
    rows.setAbsolutePosition(2);
    // Fields are found by name in any case, plain or with their table's name.
    EXPECT_EQ(rows.value("C_NAME").toString(), "Beatles Best");
    EXPECT_EQ(rows.value("compilation.name").toString(), "Beatles Best");
    EXPECT_EQ(rows.value("RECDATE").toDate(), QDate(1997, 1, 21));
    EXPECT_EQ(errorNumber([&] { rows.value("NoSuchField"); }), engine::jet::kItemNotFound);

    Recordset none = db.openRecordset("SELECT * FROM Compilation WHERE Name = 'none'");
    EXPECT_TRUE(none.bof() && none.eof());
    EXPECT_EQ(none.absolutePosition(), -1);
    EXPECT_EQ(errorNumber([&] { none.moveFirst(); }), engine::jet::kNoCurrentRecord);
    EXPECT_EQ(errorNumber([&] { none.value("Name"); }), engine::jet::kNoCurrentRecord);
}

using RecordsetFinds = EngineFixture;

// Finds move in all four directions; criteria name the statement's aliases (the rules of
// criteria are the dialect's).
TEST_F(RecordsetFinds, FindsMoveInAllFourDirectionsOverTheAliases) {
    Recordset rows = db.openRecordset(kCompilations);
    const std::pair<std::function<void(const QString&)>, const char*> finds[] = {
        {[&](const QString& c) { rows.findFirst(c); }, "Ärzte Live"},
        {[&](const QString& c) { rows.findNext(c); }, "Beatles Best"},
        {[&](const QString& c) { rows.findLast(c); }, "Zappa"},
        {[&](const QString& c) { rows.findPrevious(c); }, "Beatles Best"}};
    for (const auto& [find, name] : finds) {
        find("C_Box LIKE 'Box**' And RecDate >=#1/1/97# Or C_SumTime = 0");
        EXPECT_EQ(rows.value("C_Name").toString(), name);
    }
}

TEST_F(RecordsetFinds, AMissOrABadCriterionLeavesThePosition) {
    Recordset rows = db.openRecordset(kCompilations);
    rows.setAbsolutePosition(1);
    rows.findNext("C_Name LIKE 'Nobody*'");
    EXPECT_TRUE(rows.noMatch());
    EXPECT_EQ(rows.absolutePosition(), 1);
    EXPECT_NE(errorNumber([&] { rows.findFirst("NoSuchColumn = 1"); }), 0);
    EXPECT_EQ(rows.absolutePosition(), 1);
}

TEST_F(RecordsetFinds, SortOrdersACopyOfTheRows) {
    Recordset rows = db.openRecordset(kCompilations);
    rows.setSort("C_SumTime DESC, C_Name");
    Recordset sorted = rows.openRecordset();
    EXPECT_EQ(column(sorted, "C_Name"),
              QStringList({"Beatles Best", "abba hits", "Ärzte Live", "Zappa"}));
    EXPECT_EQ(column(rows, "C_Name").first(), "abba hits");
}

using RecordsetChanges = EngineFixture;

TEST_F(RecordsetChanges, EditThroughAnAliasWritesTheColumn) {
    Recordset rows = db.openRecordset(kCompilations);
    rows.findFirst("C_Name = 'Zappa'");
    rows.edit();
    rows.setValue("c_sumtrack", 7);
    rows.setValue("C_SumTime", 1234);
    rows.update();
    EXPECT_EQ(rows.value("C_SumTrack").toInt(), 7);
    EXPECT_EQ(
        testsupport::queryRaw(
            path, "SELECT SumTrack || '/' || SumTime FROM Compilation WHERE CompilationID_P = 4"),
        "7/1234");
}

TEST_F(RecordsetChanges, ChangesOutsideEditAreRefused) {
    Recordset rows = db.openRecordset(kCompilations);
    EXPECT_EQ(errorNumber([&] { rows.setValue("C_Name", "x"); }), engine::jet::kUpdateWithoutEdit);
    EXPECT_EQ(errorNumber([&] { rows.update(); }), engine::jet::kUpdateWithoutEdit);
    Recordset grouped =
        db.openRecordset("SELECT Format, Count(*) AS N FROM Compilation GROUP BY Format");
    EXPECT_EQ(errorNumber([&] { grouped.edit(); }), engine::jet::kReadOnly);
}

// On the table itself, whose rows are read in place.
TEST_F(RecordsetChanges, ValuesAreConvertedToTheColumnsTypes) {
    Recordset rows = db.openRecordset("CompilationTrack");
    rows.edit();
    rows.setValue("Length", " 212.6 ");  // typed text into a number column, rounded
    rows.setValue("Live", "Yes");
    rows.setValue("Track_Title", true);
    rows.update();
    EXPECT_EQ(rows.value("Length").toInt(), 213);
    EXPECT_EQ(rows.value("Live"), QVariant(true));
    EXPECT_EQ(rows.value("Track_Title").toString(), "True");
    rows.edit();
    rows.setValue("Length", "two minutes");
    EXPECT_EQ(errorNumber([&] { rows.update(); }), engine::jet::kConversionError);
}

TEST_F(RecordsetChanges, AddNewNumbersTheRowAndRefusesDuplicateNames) {
    Recordset rows = db.openRecordset("Compilation");
    rows.addNew();
    rows.setValue("Name", "New One");
    rows.setValue("Format", "MD");
    rows.setValue("C_Length", 74);
    rows.setValue("RecDate", QDate(2001, 2, 3));
    rows.update();
    rows.setBookmark(rows.lastModified());
    EXPECT_EQ(rows.value("CompilationID_P").toInt(), 5);
    EXPECT_EQ(rows.value("SumTrack").toString(), "0");  // the table's default shows at once
    EXPECT_EQ(rows.value("RecDate").toDate(), QDate(2001, 2, 3));
    EXPECT_EQ(rows.recordCount(), 5);

    rows.addNew();
    rows.setValue("Name", "ABBA HITS");  // differs from "abba hits" in case only
    rows.setValue("Format", "MD");
    rows.setValue("C_Length", 74);
    EXPECT_EQ(errorNumber([&] { rows.update(); }), engine::jet::kDuplicateValue);
    EXPECT_EQ(testsupport::queryRaw(path, "SELECT count(*) FROM Compilation"), "5");
}

TEST_F(RecordsetChanges, DeletingACompilationDeletesItsTracks) {
    Recordset rows = db.openRecordset("Compilation");
    rows.findFirst("Name = 'Beatles Best'");
    rows.remove();
    EXPECT_EQ(errorNumber([&] { rows.value("Name"); }), engine::jet::kRecordDeleted);
    rows.moveNext();
    EXPECT_EQ(rows.value("Name").toString(), "abba hits");
    EXPECT_EQ(rows.recordCount(), 3);
    EXPECT_EQ(testsupport::queryRaw(
                  path, "SELECT count(*) FROM CompilationTrack WHERE CompilationID_F1 = 1"),
              "0");
}

TEST_F(RecordsetChanges, TheTrackJoinWritesTracks) {
    Recordset rows = db.openRecordset(
        "SELECT Compilation.*, CompilationTrack.* FROM Compilation LEFT JOIN CompilationTrack ON "
        "Compilation.CompilationID_P = CompilationTrack.CompilationID_F1 WHERE "
        "CompilationTrack.CompilationID_F1 = 1 ORDER BY Compilation.Name, "
        "CompilationTrack.TrackNo ");
    ASSERT_EQ(rows.recordCount(), 2);
    rows.addNew();
    rows.setValue("CompilationID_F1", 1);
    rows.setValue("TrackNo", 3);
    rows.setValue("Track_Title", "Michelle");
    rows.setValue("Live", true);
    rows.update();
    EXPECT_EQ(testsupport::queryRaw(
                  path, "SELECT Live FROM CompilationTrack WHERE Track_Title = 'Michelle'"),
              "-1");
    EXPECT_EQ(testsupport::queryRaw(path, "SELECT count(*) FROM Compilation"), "4");

    rows.moveFirst();
    rows.edit();
    rows.setValue("Track_Title", "Help");
    rows.update();
    rows.moveFirst();
    rows.remove();  // removes the track, not its compilation
    EXPECT_EQ(
        testsupport::queryRaw(
            path,
            "SELECT group_concat(Track_Title) FROM CompilationTrack WHERE CompilationID_F1 = 1"),
        "Yesterday,Michelle");
    EXPECT_EQ(testsupport::queryRaw(path, "SELECT count(*) FROM Compilation"), "4");
}
