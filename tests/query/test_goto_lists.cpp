#include <gtest/gtest.h>

#include <algorithm>

#include "engine/jet_error.h"
#include "engine/recordset.h"
#include "query/goto_find.h"
#include "query/goto_fixture.h"
#include "query/goto_lists.h"
#include "query/value_printers.h"

namespace {

using query::GotoLists;

const QStringList kNumberComparisons{"=", ">=", ">", "<=", "<", "<>", "Is Null", "Is Not Null"};

QStringList sorted(QStringList list) {
    std::sort(list.begin(), list.end());
    return list;
}

// ---- goto fields and query texts ----

TEST(GotoField, PerformerColumnsSearchTheirSortNames) {
    EXPECT_EQ(query::gotoFieldForColumn("PerformerTrack"), "ArtistSort");
    EXPECT_EQ(query::gotoFieldForColumn("performertrack"), "ArtistSort");
    EXPECT_EQ(query::gotoFieldForColumn("PERFORMERALBUM"), "AlbumArtistSort");
    EXPECT_EQ(query::gotoFieldForColumn("TitleTrack"), "TitleTrack");
    EXPECT_EQ(query::gotoFieldForColumn("performer"), "performer");
}

TEST(GotoQueryText, SourceQueriesPutTheFilterBetweenFromAndGroupBy) {
    const auto plain = query::sourceGotoQuery("ArtistSort", QString());
    ASSERT_TRUE(plain);
    EXPECT_EQ(plain->text,
              "SELECT   TempSource.ArtistSort FROM     TempSource  GROUP BY "
              "TempSource.ArtistSort;");
    EXPECT_EQ(plain->resultField, "artistsort");
    EXPECT_EQ(plain->typeLetter, "c");

    const auto filtered = query::sourceGotoQuery("ARTISTSORT", "WHERE Live = True");
    ASSERT_TRUE(filtered);
    EXPECT_EQ(filtered->text,
              "SELECT   TempSource.ArtistSort FROM     TempSource WHERE Live = "
              "True GROUP BY TempSource.ArtistSort;");
}

TEST(GotoQueryText, CompilationQueriesHaveOneBlankBeforeGroupBy) {
    const auto name = query::compilationGotoQuery("C_Name");
    ASSERT_TRUE(name);
    EXPECT_EQ(name->text,
              "SELECT   Compilation.Name FROM     Compilation GROUP BY Compilation.Name;");
    EXPECT_EQ(name->resultField, "Name");

    const auto sumTime = query::compilationGotoQuery("c_sumtime");
    ASSERT_TRUE(sumTime);
    EXPECT_EQ(sumTime->text,
              "SELECT   Compilation.SumTime AS C_SumTime  FROM     Compilation "
              "GROUP BY Compilation.SumTime;");

    const auto notes = query::compilationGotoQuery("C_NOTES");
    ASSERT_TRUE(notes);
    EXPECT_EQ(notes->text,
              "SELECT   Mid(Compilation.Notes,1) AS Notes FROM     Compilation "
              "GROUP BY Mid(Compilation.Notes,1);");
}

TEST(GotoQueryText, FieldsOutsideTheTablesHaveNoQuery) {
    EXPECT_FALSE(query::sourceGotoQuery("Location", QString()));
    EXPECT_FALSE(query::sourceGotoQuery("C_Name", QString()));
    EXPECT_FALSE(query::compilationGotoQuery("ArtistSort"));
    EXPECT_FALSE(query::compilationGotoQuery("Name"));  // the list goes by the alias C_Name
}

// ---- list contents ----

using GotoListTest = GotoFixture;

TEST_F(GotoListTest, SourceListHoldsDistinctValuesCaseBlindInGroupOrder) {
    const GotoLists lists =
        query::fillSourceGotoList(db, query::gotoFieldForColumn("PERFORMERTRACK"), {}, kInputHint);
    ASSERT_EQ(lists.entries.size(), 5);
    EXPECT_EQ(lists.count, 5);
    EXPECT_EQ(lists.entries[0], "B*at [Test]");
    EXPECT_EQ(lists.entries[1], "beat happening");
    EXPECT_EQ(lists.entries[2].toLower(), "beatles, the");
    EXPECT_EQ(lists.entries.mid(3), (QStringList{"O'Neil, Sinead", "Zappa, Frank"}));
    EXPECT_EQ(lists.comparisons,
              (QStringList{"Starts", "Contains", "Like", "Not Like", "Is Null", "Is Not Null"}));
    EXPECT_EQ(lists.comparisonPreset, "Starts");
    EXPECT_TRUE(lists.tooltip.isEmpty());
}

TEST_F(GotoListTest, FilterInForceNarrowsTheSourceList) {
    const GotoLists lists =
        query::fillSourceGotoList(db, "ArtistSort", "WHERE Live = True", kInputHint);
    EXPECT_EQ(lists.entries, (QStringList{"beat happening", "Beatles, The"}));
    EXPECT_EQ(lists.count, 2);

    const GotoLists albums = query::fillSourceGotoList(
        db, query::gotoFieldForColumn("PerformerAlbum"), "WHERE Item = 1", kInputHint);
    EXPECT_EQ(albums.entries,
              (QStringList{"Beat Happening", "Beatles, The", "Odd", "Zappa, Frank"}));
}

TEST_F(GotoListTest, LengthListsPlayTimesWithTheInputHint) {
    const GotoLists lists = query::fillSourceGotoList(db, "Length", {}, kInputHint);
    EXPECT_EQ(lists.entries, (QStringList{"00:00:00", "00:02:05", "00:02:40", "00:03:25",
                                          "00:04:20", "00:05:00"}));
    EXPECT_EQ(lists.count, 6);  // the track without a length gives no entry
    EXPECT_EQ(lists.tooltip, kInputHint);
    EXPECT_EQ(lists.comparisons, kNumberComparisons);
    EXPECT_EQ(lists.comparisonPreset, "=");
}

TEST_F(GotoListTest, LiveListsYesAndNoWithEqualsOnly) {
    const GotoLists lists = query::fillSourceGotoList(db, "live", {}, kInputHint);
    EXPECT_EQ(sorted(lists.entries), (QStringList{"No", "Yes"}));
    EXPECT_EQ(lists.comparisons, QStringList{"="});
    EXPECT_EQ(lists.comparisonPreset, "=");
    EXPECT_TRUE(lists.tooltip.isEmpty());
}

TEST_F(GotoListTest, AllNullColumnGivesAnEmptyListAndCountZero) {
    const GotoLists version = query::fillSourceGotoList(db, "Version", {}, kInputHint);
    EXPECT_TRUE(version.entries.isEmpty());
    EXPECT_EQ(version.count, 0);
    EXPECT_EQ(version.comparisonPreset, "Starts");  // the comparisons are still offered

    const GotoLists manufacturer = query::fillCompilationGotoList(db, "Manufacturer", kInputHint);
    EXPECT_TRUE(manufacturer.entries.isEmpty());
    EXPECT_EQ(manufacturer.count, 0);
}

TEST_F(GotoListTest, UnknownFieldLeavesBothListsEmpty) {
    const GotoLists lists = query::fillSourceGotoList(db, "Location", {}, kInputHint);
    EXPECT_TRUE(lists.entries.isEmpty());
    EXPECT_TRUE(lists.comparisons.isEmpty());
    EXPECT_EQ(lists.count, 0);
    EXPECT_TRUE(query::fillCompilationGotoList(db, "ArtistSort", kInputHint).comparisons.isEmpty());
}

TEST_F(GotoListTest, CompilationNamesSortCaseBlind) {
    const GotoLists lists = query::fillCompilationGotoList(db, "C_Name", kInputHint);
    EXPECT_EQ(lists.entries, (QStringList{"abba hits", "Beatles Best", "O'Neil Mix", "Zappa"}));
    EXPECT_EQ(lists.count, 4);
    EXPECT_EQ(query::fillCompilationGotoList(db, "c_box", kInputHint).entries,
              QStringList{"Box 1"});
    EXPECT_EQ(query::fillCompilationGotoList(db, "C_Notes", kInputHint).entries,
              (QStringList{"first", "Rock'n'Roll"}));
}

TEST_F(GotoListTest, RecordingDatesAcrossTheCenturyInDateOrder) {
    const GotoLists lists = query::fillCompilationGotoList(db, "RecDate", kInputHint);
    EXPECT_EQ(lists.entries, (QStringList{"21.01.97", "31.12.99", "01.01.00"}));
    EXPECT_EQ(lists.count, 3);
    EXPECT_EQ(lists.tooltip, kInputHint);
    EXPECT_EQ(lists.comparisons, kNumberComparisons);
}

TEST_F(GotoListTest, NumbersListAsTextWithoutNulls) {
    EXPECT_EQ(query::fillSourceGotoList(db, "Index", {}, kInputHint).entries,
              (QStringList{"1", "2", "3"}));
    EXPECT_EQ(query::fillSourceGotoList(db, "MyRecorded", {}, kInputHint).entries,
              (QStringList{"1965", "1969", "1990", "2001"}));
    const GotoLists times = query::fillCompilationGotoList(db, "C_SumTime", kInputHint);
    EXPECT_EQ(times.entries, (QStringList{"00:00:00", "00:02:50", "00:06:40"}));
    EXPECT_EQ(times.tooltip, kInputHint);

    const GotoLists tracks = query::fillCompilationGotoList(db, "C_SumTrack", kInputHint);
    EXPECT_EQ(tracks.entries, (QStringList{"0", "1", "2"}));
    EXPECT_TRUE(tracks.tooltip.isEmpty());
    EXPECT_EQ(query::fillCompilationGotoList(db, "C_Length", kInputHint).entries,
              (QStringList{"74", "80", "90"}));
}

TEST_F(GotoListTest, CurrencyValuesListInCurrencyForm) {
    engine::Recordset rows = db.openRecordset(
        "SELECT SumTrack * 1.5 AS Price FROM Compilation WHERE SumTrack > 0 ORDER BY SumTrack",
        engine::RecordsetType::Snapshot);
    const GotoLists lists = query::fillGotoList("Price", "R", rows, kInputHint);
    ASSERT_EQ(lists.count, 3);
    EXPECT_TRUE(lists.entries[0].contains("1.50")) << lists.entries[0].toStdString();
    EXPECT_TRUE(lists.entries[2].contains("3.00")) << lists.entries[2].toStdString();
    EXPECT_TRUE(lists.tooltip.isEmpty());
}

// ---- finds ----

// One click on a find button: what was chosen and typed, and what must follow.
struct FindStep {
    int mode;
    const char* comparison;
    const char* typed;
    const char* field;
    const char* criterion;   // "" when the find ends without moving
    const char* normalised;  // the goto text afterwards
    const char* landsOn;     // key field of the row the record set stands on afterwards
};

class GotoFindTest : public GotoFixture {
  protected:
    void SetUp() override {
        GotoFixture::SetUp();
        source = openSource();
    }

    // Runs the steps in order on the same record set, as a user clicking along would.
    void run(std::initializer_list<FindStep> steps) { run(source, "TitleTrack", steps); }
    void run(engine::Recordset& rows, const QString& keyField,
             std::initializer_list<FindStep> steps) {
        for (const FindStep& step : steps) {
            SCOPED_TRACE(QStringLiteral("%1 %2 %3")
                             .arg(step.field, step.comparison, step.typed)
                             .toStdString());
            QString text = QString::fromUtf8(step.typed);
            const auto criterion =
                query::findInGotoList(step.mode, step.comparison, text, rows, step.field, dialogs);
            EXPECT_EQ(criterion.value_or(QString()), QString::fromUtf8(step.criterion));
            EXPECT_EQ(text, QString::fromUtf8(step.normalised));
            EXPECT_EQ(rows.value(keyField).toString(), QString::fromUtf8(step.landsOn));
        }
    }

    engine::Recordset source;
};

TEST_F(GotoFindTest, TimesAreNormalisedAndShortTimesSkipTracksWithoutTime) {
    run({{1, "<", "000325", "Length", "Length <205 And Length > 0", "00:03:25", "Yesterday"},
         {1, "<=", "00:03:25", "length", "length <=205 And length > 0", "00:03:25",
          "Nothing Compares"},
         {3, "<=", "00:03:25", "length", "length <=205 And length > 0", "00:03:25", "Yesterday"},
         {1, ">", "000400", "Length", "Length >240", "00:04:00", "Help!"}});
    EXPECT_TRUE(dialogs.messages().empty());
    run({{1, "=", "3:25", "Length", "", "", "Help!"}});
    EXPECT_EQ(dialogs.lastMessageText(), "Value must be a valid time (e.g. 00:49:07).");
}

TEST_F(GotoFindTest, YesNoAndNumbersAreCheckedAndWrittenBack) {
    run({{1, "=", "Yes", "Live", "Live =True", "True", "Indian Summer"},
         {3, "=", "True", "Live", "Live =True", "True", "Yesterday"},
         {4, "=", "No", "live", "live =False", "False", "Michelle"},
         {1, "=", " 2 ", "Item", "Item =2", "2", "Nothing Compares"},
         {1, "=", "3", "Index", "Index =3", "3", "Yesterday"},
         {4, "<", "1970", "MyRecorded", "MyRecorded <1970", "1970", "Michelle"}});
    EXPECT_TRUE(dialogs.messages().empty());
    run({{1, "=", "perhaps", "Live", "", "", "Michelle"}});
    EXPECT_EQ(dialogs.lastMessageText(), "Value must be 'Yes' or 'No'.");
    run({{1, "=", "two", "Item", "", "", "Michelle"}});
    EXPECT_EQ(dialogs.lastMessageText(), "Value must be a number (integer).");
}

TEST_F(GotoFindTest, StartsAndContainsMatchTheTextLiterallyInEveryDirection) {
    run({{1, "Starts", "Beat", "ArtistSort", "ArtistSort LIKE 'Beat**'", "Beat", "Help!"},
         {3, "Starts", "Beat", "ArtistSort", "ArtistSort LIKE 'Beat**'", "Beat", "Indian Summer"},
         {4, "starts", "Beat", "ArtistSort", "ArtistSort LIKE 'Beat**'", "Beat", "Michelle"},
         {2, "Starts", "Beat", "ArtistSort", "ArtistSort LIKE 'Beat**'", "Beat", "Yesterday"},
         {1, "Starts", "B*at", "ArtistSort", "ArtistSort LIKE 'B[*]at**'", "B*at", "Title?"},
         {1, "Contains", "O'Neil", "ArtistSort", "ArtistSort LIKE '*O''Neil*'", "O'Neil",
          "Nothing Compares"},
         {4, "Contains", "[test]", "ArtistSort", "ArtistSort LIKE '*[[]test]*'", "[test]",
          "Title?"},
         {1, "Contains", "?", "TitleTrack", "TitleTrack LIKE '*[?]*'", "?", "Title?"}});
}

TEST_F(GotoFindTest, LikeKeepsTheTypedWildcardsActive) {
    run({{1, "Like", "B?at*", "ArtistSort", "ArtistSort Like 'B?at*'", "B?at*", "Help!"},
         {4, "Like", "B?at*", "ArtistSort", "ArtistSort Like 'B?at*'", "B?at*", "Michelle"},
         // "Peaches" of track 1 ends in s
         {1, "Not Like", "*s", "TitleTrack", "TitleTrack Not Like '*s'", "*s", "Help!"}});
}

TEST_F(GotoFindTest, NullComparisonsIgnoreTheValue) {
    run({{1, "Is Null", "", "RatingTrack", "RatingTrack Is Null", "", "Indian Summer"},
         {3, "Is Null", "", "RatingTrack", "RatingTrack Is Null", "", "Yesterday"},
         {4, "Is Not Null", "no time", "Length", "Length Is Not Null", "no time", "Michelle"},
         // track 6 has no length
         {2, "Is Not Null", "no time", "Length", "Length Is Not Null", "no time", "Yesterday"}});
    EXPECT_TRUE(dialogs.messages().empty());
}

TEST_F(GotoFindTest, EmptyTextValueIsRefusedWithoutMoving) {
    source.setAbsolutePosition(3);
    run({{1, "Starts", "", "TitleTrack", "", "", "Nothing Compares"}});
    ASSERT_EQ(dialogs.messages().size(), 1u);
    const platform::MessageRequest& shown = dialogs.messages().front();
    EXPECT_EQ(shown.text, "Value must be a string.");
    EXPECT_EQ(shown.title, "Mixorama");
    EXPECT_EQ(shown.icon, platform::MessageIcon::Exclamation);
    EXPECT_EQ(shown.buttons, platform::MessageButtons::Ok);
}

TEST_F(GotoFindTest, OtherModesAndMissesKeepThePosition) {
    source.setAbsolutePosition(1);
    run({{0, "=", "000200", "Length", "", "00:02:00", "Help!"},
         {5, "Starts", "Beat", "ArtistSort", "", "Beat", "Help!"},
         {1, "Starts", "Queen", "ArtistSort", "ArtistSort LIKE 'Queen**'", "Queen", "Help!"}});
    EXPECT_TRUE(source.noMatch());
}

TEST_F(GotoFindTest, EngineErrorIsShownAndThePositionKept) {
    QString engineMessage;
    try {
        source.findFirst("ArtistSort Resembles 'Beat'");
    } catch (const engine::JetError& error) {
        engineMessage = error.description();
    }
    ASSERT_FALSE(engineMessage.isEmpty());

    source.setAbsolutePosition(2);
    run({{1, "Resembles", "Beat", "ArtistSort", "", "Beat", "Indian Summer"}});
    ASSERT_EQ(dialogs.messages().size(), 1u);
    EXPECT_EQ(dialogs.messages().front().text, engineMessage);
    EXPECT_EQ(dialogs.messages().front().icon, platform::MessageIcon::Exclamation);

    run({{1, "Starts", "Beat", "NoSuchColumn", "", "Beat", "Indian Summer"}});
    EXPECT_EQ(dialogs.messages().size(), 2u);
}

TEST_F(GotoFindTest, CompilationFindsUseTheListAliases) {
    engine::Recordset compilations = openCompilations();
    run(compilations, "c_name",
        {{1, "=", "31.12.99", "RecDate", "RecDate =#12/31/99#", "31.12.99", "abba hits"},
         // 1.1.2000 lies after 1999
         {1, ">", "31/12/1999", "RecDate", "RecDate >#12/31/99#", "31.12.99", "O'Neil Mix"},
         {4, "<=", "000650", "C_SumTime", "C_SumTime <=410 And C_SumTime > 0", "00:06:50", "Zappa"},
         {1, "Starts", "o'neil", "C_Name", "C_Name LIKE 'o''neil**'", "o'neil", "O'Neil Mix"},
         {2, "<", "90", "C_Length", "C_Length <90", "90", "Beatles Best"},
         {1, "=", "010100", "RecDate", "", "", "Beatles Best"}});
    EXPECT_EQ(dialogs.lastMessageText(), "Value must be a valid date (e.g. 21.01.97).");
}

}  // namespace
