#include <gtest/gtest.h>

#include "engine/recordset.h"
#include "query/filter_clause.h"
#include "query/goto_fixture.h"
#include "query/value_printers.h"

namespace {

using query::FilterOutcome;
using query::FilterRow;
using Rows = std::array<FilterRow, 2>;

const QString kHint = QStringLiteral("Time as: HHMMSS    Date as: DD.MM.YY");

FilterOutcome build(const FilterRow& first, const QString& concatenation = QString(),
                    const FilterRow& second = FilterRow()) {
    return query::buildFilterClause(Rows{first, second}, concatenation);
}

// The clause of a single row that must pass.
QString clauseOf(const FilterRow& row) {
    const FilterOutcome outcome = build(row);
    EXPECT_FALSE(outcome.failed()) << outcome.message.toStdString();
    return outcome.clause;
}

// ---- the two tables and the comparison lists ----

TEST(FilterTables, VariablesAndComparisonsInListOrder) {
    QStringList captions, fields, types;
    for (const query::FilterVariable& variable : query::variableTable()) {
        captions << variable.caption;
        fields << variable.field;
        types << variable.typeLetter;
    }
    EXPECT_EQ(captions,
              QStringList({"Track Performer", "Track Title", "Recorded", "Time", "Rating", "Live",
                           "Version", "Album Title", "Album Performer", "Item #", "Index #"}));
    EXPECT_EQ(fields,
              QStringList({"ArtistSort", "TitleTrack", "MyRecorded", "Length", "RatingTrack",
                           "Live", "Version", "TitleAlbum", "AlbumArtistSort", "Item", "Index"}));
    EXPECT_EQ(types.join(QString()),
              "ccntcbccc"
              "nn");

    QStringList comparisons;
    QList<int> classes;
    for (const query::FilterComparison& comparison : query::comparisonTable()) {
        comparisons << comparison.caption;
        classes << comparison.comparisonClass;
    }
    EXPECT_EQ(comparisons, QStringList({"Starts", "Contains", "Like", "Not Like", "Is Null",
                                        "Is Not Null", "=", "<>", ">", ">=", "<", "<="}));
    EXPECT_EQ(classes, QList<int>({2, 2, 2, 2, 3, 3, 5, 1, 1, 1, 1, 1}));

    ASSERT_NE(query::findVariable("item #"), nullptr);
    EXPECT_EQ(query::findVariable("item #")->field, "Item");
    EXPECT_EQ(query::findVariable("Item"), nullptr);
}

TEST(FillComparison, EachTypeOffersItsComparisons) {
    const QStringList text{"Starts", "Contains", "Like", "Not Like", "Is Null", "Is Not Null"};
    const QStringList number{"Is Null", "Is Not Null", "=", "<>", ">", ">=", "<", "<="};
    EXPECT_EQ(query::fillComparison("c", kHint).comparisons, text);
    EXPECT_EQ(query::fillComparison("C", kHint).comparisons, text);
    EXPECT_EQ(query::fillComparison("n", kHint).comparisons, number);
    EXPECT_EQ(query::fillComparison("t", kHint).comparisons, number);
    EXPECT_EQ(query::fillComparison("b", kHint).comparisons, QStringList{"="});
    EXPECT_EQ(query::fillComparison("d", kHint).comparisons.size(), 12);
}

TEST(FillComparison, OnlyTimesGetTheInputHint) {
    EXPECT_EQ(query::fillComparison("T", kHint).textTooltip, kHint);
    for (const char* letter : {"c", "n", "b", "d"})
        EXPECT_TRUE(query::fillComparison(letter, kHint).textTooltip.isEmpty()) << letter;
}

// ---- which rows are complete ----

TEST(FilterRows, BothEmptyRemoveTheFilter) {
    const FilterOutcome outcome = build({}, "And");
    EXPECT_FALSE(outcome.failed());
    EXPECT_TRUE(outcome.clause.isEmpty());
    EXPECT_EQ(query::sourceRecordSource(outcome.clause, QString()), "SELECT * FROM tempsource  ");
    EXPECT_EQ(query::sourceRecordSource("WHERE Item = 1", "ORDER BY Item"),
              "SELECT * FROM tempsource WHERE Item = 1 ORDER BY Item");
}

TEST(FilterRows, MissingPiecesAreNamedByRow) {
    EXPECT_EQ(build({}, "And", {"Item #", "=", "1"}).message, "First filter definition is empty.");
    EXPECT_EQ(build({"", "", "Beat"}).message, "First filter definition is incomplete.");
    EXPECT_EQ(build({"Track Title", "Starts", ""}).message,
              "First filter definition is incomplete.");
    EXPECT_EQ(build({"Track Title", "", "Help"}).message, "First filter definition is incomplete.");
    // The second row is checked for completeness before the concatenation.
    EXPECT_EQ(build({"Item #", "=", "1"}, "", {"Track Title", "", ""}).message,
              "Second filter definition is incomplete.");
    EXPECT_EQ(build({"Item #", "=", "1"}, "", {"Index #", "=", "2"}).message,
              "First and second filter definitions are not properly concatenated.");
    EXPECT_EQ(build({"Item #", "=", "1"}, "Plus", {"Index #", "=", "2"}).message,
              "First and second filter definitions are not properly concatenated.");
}

TEST(FilterRows, UnknownOrUnofferedChoicesAreIncomplete) {
    EXPECT_EQ(build({"Composer", "Starts", "Bach"}).message,
              "First filter definition is incomplete.");
    EXPECT_EQ(build({"Track Performer", "=", "Beatles"}).message,
              "First filter definition is incomplete.");
    EXPECT_EQ(build({"Time", "Starts", "000300"}).message,
              "First filter definition is incomplete.");
    EXPECT_EQ(build({"Item #", "=", "1"}, "Or", {"Live", ">", "yes"}).message,
              "Second filter definition is incomplete.");
    EXPECT_EQ(clauseOf({"track performer", "starts", "Beat"}), "WHERE ArtistSort LIKE 'Beat**'");
}

TEST(FilterRows, NullTestsNeedNoText) {
    EXPECT_EQ(clauseOf({"Album Title", "Is Null", ""}), "WHERE TitleAlbum Is Null");
    const FilterOutcome typed = build({"Time", "Is Not Null", "anything"});
    EXPECT_EQ(typed.clause, "WHERE Length Is Not Null");
    EXPECT_EQ(typed.texts[0], "anything");
}

TEST(FilterRows, ConcatenationWithoutSecondRowIsIgnored) {
    EXPECT_EQ(build({"Item #", "=", "1"}, "Or").clause, "WHERE Item = 1");
    EXPECT_EQ(build({"Item #", "=", "1"}, "or", {"Index #", "<>", "2"}).clause,
              "WHERE Item = 1 Or Index <> 2");
}

// ---- typed values ----

TEST(FilterValues, NumbersAreRoundedAndBounded) {
    const FilterOutcome rounded = build({"Item #", "=", "12.6"});
    EXPECT_EQ(rounded.clause, "WHERE Item = 13");
    EXPECT_EQ(rounded.texts[0], "13");

    const FilterOutcome tooBig = build({"Item #", "=", "40000"});
    EXPECT_EQ(tooBig.message, "First filter text must be a number (integer).");
    EXPECT_TRUE(tooBig.texts[0].isEmpty());
    EXPECT_EQ(build({"Recorded", ">", "1990"}, "And", {"Index #", "<", "x"}).message,
              "Second filter text must be a number (integer).");
}

TEST(FilterValues, TimesAreComparedInSeconds) {
    const FilterOutcome time = build({"Time", "=", "014907"});
    EXPECT_EQ(time.clause, "WHERE Length = 6547");
    EXPECT_EQ(time.texts[0], "01:49:07");
    EXPECT_EQ(clauseOf({"Time", "<=", "004907"}), "WHERE Length <= 2947");

    const FilterOutcome loose = build({"Time", ">=", "1:49:07"});
    EXPECT_EQ(loose.message, "First filter text must be a valid time (e.g. 00:49:07).");
    EXPECT_TRUE(loose.texts[0].isEmpty());
    EXPECT_EQ(build({"Item #", "=", "1"}, "And", {"Time", "<", "006000"}).message,
              "Second filter text must be a valid time (e.g. 00:49:07).");
}

TEST(FilterValues, YesNoWordsBecomeTrueOrFalse) {
    const FilterOutcome no = build({"Live", "=", "Nein"});
    EXPECT_EQ(no.clause, "WHERE Live = False");
    EXPECT_EQ(no.texts[0], "False");
    EXPECT_EQ(clauseOf({"Live", "=", "yes"}), "WHERE Live = True");
    EXPECT_EQ(build({"Live", "=", "maybe"}).message, "First filter text must be 'Yes' or 'No'.");
    EXPECT_EQ(build({"Item #", "=", "1"}, "Or", {"Live", "=", "2"}).message,
              "Second filter text must be 'Yes' or 'No'.");
}

TEST(FilterValues, PassedTextsKeepTheirNormalFormWhenALaterRowFails) {
    const FilterOutcome outcome = build({"Time", ">", "000300"}, "And", {"Item #", "=", "abc"});
    EXPECT_EQ(outcome.texts[0], "00:03:00");
    EXPECT_TRUE(outcome.texts[1].isEmpty());
    EXPECT_TRUE(outcome.clause.isEmpty());
}

TEST(FilterValues, TextPatternsEscapeWhatTheUserMeantLiterally) {
    EXPECT_EQ(clauseOf({"Track Performer", "Contains", "O'Neil"}),
              "WHERE ArtistSort LIKE '*O''Neil*'");
    EXPECT_EQ(clauseOf({"Track Performer", "Like", "Bea?les"}), "WHERE ArtistSort Like 'Bea?les'");
    EXPECT_EQ(clauseOf({"Version", "Not Like", "*[mix]*"}), "WHERE Version Not Like '*[[]mix]*'");
    EXPECT_EQ(clauseOf({"Rating", "Starts", "**#"}), "WHERE RatingTrack LIKE '[*][*][#]**'");
    EXPECT_EQ(
        build({"Track Title", "Contains", "50% [live]"}, "And", {"Time", ">=", "000300"}).clause,
        "WHERE TitleTrack LIKE '*50% [[]live]*' And Length >= 180");
}

// ---- applying a clause to TempSource ----

class FilterApply : public GotoFixture {
  protected:
    // Applies the rows and returns the TrackIDs of the passing rows in TempSource order.
    QList<int> apply(const FilterRow& first, const QString& concatenation = QString(),
                     const FilterRow& second = FilterRow()) {
        outcome =
            query::applyFilter(db, Rows{first, second}, concatenation, filterClause, passedCount);
        QList<int> ids;
        engine::Recordset rows = db.openRecordset(
            query::sourceRecordSource(filterClause, QString()), engine::RecordsetType::Snapshot);
        for (; !rows.eof(); rows.moveNext())
            ids << rows.value(QStringLiteral("TrackID")).toInt();
        return ids;
    }

    FilterOutcome outcome;
    QString filterClause;
    qint64 passedCount = -1;
};

TEST_F(FilterApply, PassingRowsAreCountedAndShown) {
    EXPECT_EQ(apply({"Track Performer", "Starts", "beat"}), QList<int>({2, 3, 5, 7}));
    EXPECT_EQ(passedCount, 4);
    EXPECT_FALSE(outcome.failed());
    EXPECT_EQ(apply({"Track Performer", "Starts", "B*at"}), QList<int>({6}));
    EXPECT_EQ(apply({"Track Performer", "Contains", "O'Neil"}), QList<int>({4}));
    EXPECT_EQ(apply({"Track Performer", "Like", "Bea?les*"}), QList<int>({2, 5, 7}));
    EXPECT_EQ(apply({"Time", ">=", "000300"}), QList<int>({2, 3, 4}));
    EXPECT_EQ(apply({"Time", ">=", "000420"}, "Or", {"Live", "=", "ja"}), QList<int>({2, 3, 5}));
    EXPECT_EQ(apply({"Time", ">", "000420"}, "And", {"Live", "=", "ja"}), QList<int>({3}));
    EXPECT_EQ(apply({"Item #", "=", "3"}, "Or", {"Index #", "=", "3"}), QList<int>({5, 7}));
    EXPECT_EQ(apply({"Album Performer", "Is Null", ""}), QList<int>({4}));
    EXPECT_EQ(passedCount, 1);
    EXPECT_EQ(apply({}), QList<int>({1, 2, 3, 4, 5, 6, 7}));
    EXPECT_EQ(passedCount, 7);
    EXPECT_TRUE(filterClause.isEmpty());
}

TEST_F(FilterApply, NoPassingTrackKeepsTheClause) {
    EXPECT_TRUE(apply({"Track Title", "Contains", "zzz"}).isEmpty());
    EXPECT_EQ(outcome.message, query::kNoTrackMeetsCriteria);
    EXPECT_EQ(filterClause, "WHERE TitleTrack LIKE '*zzz*'");
    EXPECT_EQ(passedCount, 0);
}

TEST_F(FilterApply, AFailedValidationLeavesTheFilterInForce) {
    apply({"Recorded", "=", "1965"});
    ASSERT_EQ(passedCount, 3);
    EXPECT_EQ(apply({"Recorded", "=", "1965"}, "", {"Live", "=", "yes"}), QList<int>({2, 5, 7}));
    EXPECT_EQ(outcome.message,
              "First and second filter definitions are not properly concatenated.");
    EXPECT_EQ(filterClause, "WHERE MyRecorded = 1965");
    EXPECT_EQ(passedCount, 3);
}

TEST_F(FilterApply, TheSortGoesAfterTheFilter) {
    apply({"Recorded", "=", "1965"});
    engine::Recordset rows =
        db.openRecordset(query::sourceRecordSource(filterClause, "ORDER BY TitleTrack DESC"),
                         engine::RecordsetType::Snapshot);
    QStringList titles;
    for (; !rows.eof(); rows.moveNext())
        titles << rows.value(QStringLiteral("TitleTrack")).toString();
    EXPECT_EQ(titles, QStringList({"Yesterday", "Michelle", "Help!"}));
}

}  // namespace
