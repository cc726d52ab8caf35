#include <gtest/gtest.h>

#include "query/filter_clause.h"
#include "query/goto_fixture.h"
#include "query/sort_clause.h"

namespace {

using K = query::ValueKind;
using query::SortCaller;
using query::SortLevel;

// Two rows as "Variable|Comparison|Text" (empty for a blank row) and their concatenation.
std::array<query::FilterRow, 2> rows(const QString& first, const QString& second = {}) {
    std::array<query::FilterRow, 2> rows;
    for (int i = 0; i < 2; ++i) {
        if (const QStringList parts = (i ? second : first).split('|'); parts.size() == 3)
            rows[i] = {parts[0], parts[1], parts[2]};
    }
    return rows;
}

TEST(SourceLists, VariablesAndKeysComeFromTheCatalogueAndOfferTheirKindsComparisons) {
    QStringList variables, source, compilation;  // the source's sort keys are its variables
    for (const query::FilterVariable& variable : query::variableTable())
        variables << variable.caption + "=" + variable.field;
    for (const query::SortKey& key : query::sortKeys(query::SortCaller::Source))
        source << key.caption + "=" + key.field;
    for (const query::SortKey& key : query::sortKeys(query::SortCaller::Compilation))
        compilation << key.caption + "=" + key.field;
    EXPECT_EQ(source.join(", "), variables.join(", ").remove(" #"));
    EXPECT_EQ(compilation.join(", "),
              "Track Performer=ArtistSort, Track Title=Track_Title, Time=Length, "
              "Recorded=RecordedStart, Album Title=Album_Title, Live=Live, Version=Version, "
              "Album Performer=AlbumArtistSort, Item=Item, Index=Index");
    EXPECT_EQ(
        variables.join(", "),
        "Track Performer=ArtistSort, Track Title=TitleTrack, Recorded=MyRecorded, "
        "Time=Length, Rating=RatingTrack, Live=Live, Version=Version, "
        "Album Title=TitleAlbum, Album Performer=AlbumArtistSort, Item #=Item, Index #=Index");
    const std::pair<K, QString> offered[] = {
        {K::Text, "Starts Contains Like Not Like Is Null Is Not Null"},
        {K::Time, "Is Null Is Not Null = <> > >= < <="},
        {K::YesNo, "="}};
    for (const auto& [kind, comparisons] : offered) {
        const query::ComparisonChoice choice = query::fillComparison(kind, "hint");
        EXPECT_EQ(choice.comparisons.join(' '), comparisons);
        EXPECT_EQ(choice.textTooltip, kind == K::Time ? "hint" : "");
    }
}

const QString kIncomplete = " filter definition is incomplete.";
const QString kNotJoined = "First and second filter definitions are not properly concatenated.";
const QString kNumber = " filter text must be a number (integer).";

// Two rows, their concatenation, the clause or message they give and the first text written
// back (nullptr: not checked).
using FilterCase = std::tuple<const char*, const char*, const char*, QString, const char*>;

const FilterCase kCases[] = {
    {"", "And", "", "", nullptr},
    {"", "And", "Item #|=|1", "First filter definition is empty.", nullptr},
    {"||Beat", "", "", "First" + kIncomplete, "Beat"},
    {"Composer|Starts|Bach", "", "", "First" + kIncomplete, nullptr},
    {"Track Performer|=|Beatles", "", "", "First" + kIncomplete, nullptr},
    {"Item #|=|1", "Or", "Live|>|yes", "Second" + kIncomplete, nullptr},
    {"Item #|=|1", "", "Track Title||", "Second" + kIncomplete, nullptr},
    {"Item #|=|1", "", "Index #|=|2", kNotJoined, nullptr},
    {"Item #|=|1", "Plus", "Index #|=|2", kNotJoined, nullptr},
    {"Item #|=|1", "or", "Index #|<>|2", "WHERE Item = 1 Or Index <> 2", nullptr},
    {"Time|Is Not Null|any", "", "", "WHERE Length Is Not Null", "any"},
    {"Item #|=|12.6", "", "", "WHERE Item = 13", "13"},
    {"Item #|=|40000", "", "", "First" + kNumber, ""},
    {"Time|>|000300", "And", "Index #|<|x", "Second" + kNumber, "00:03:00"},
    {"Time|=|014907", "", "", "WHERE Length = 6547", "01:49:07"},
    {"Time|>=|1:49:07", "", "", "First filter text must be a valid time (e.g. 00:49:07).", ""},
    {"Live|=|Nein", "", "", "WHERE Live = False", "False"},
    {"Live|=|maybe", "", "", "First filter text must be 'Yes' or 'No'.", ""},
    {"track performer|starts|Beat", "", "", "WHERE ArtistSort LIKE 'Beat**'", nullptr},
    {"Track Title|Contains|[live]", "And", "Time|>=|000300",
     "WHERE TitleTrack LIKE '*[[]live]*' And Length >= 180", nullptr},
};

TEST(FilterClause, RowsGiveTheirClauseOrTheFirstMessage) {
    for (const auto& [first, concatenation, second, clauseOrMessage, written] : kCases) {
        const query::FilterOutcome outcome =
            query::buildFilterClause(rows(first, second), concatenation);
        EXPECT_EQ(outcome.failed() ? outcome.message : outcome.clause, clauseOrMessage);
        if (written) {
            EXPECT_EQ(outcome.texts[0], written) << first;
        }
    }
}

using SourceTools = GotoFixture;

TEST_F(SourceTools, PassingRowsAreCountedAndAFailureLeavesTheFilterInForce) {
    query::FilterOutcome outcome;
    QString clause;
    qint64 passedCount = -1;
    // The TrackIDs of the rows that pass, in TempSource order.
    const auto apply = [&](const QString& first, const QString& concatenation = {},
                           const QString& second = {}) {
        outcome = query::applyFilter(db, rows(first, second), concatenation, clause, passedCount);
        return values(query::sourceRecordSource(clause, {}), "TrackID");
    };
    EXPECT_EQ(apply("Track Performer|Starts|beat"), "2|3|5|7");
    EXPECT_EQ(apply("Time|>=|000420", "Or", "Live|=|ja"), "2|3|5");
    EXPECT_EQ(apply("Album Performer|Is Null|"), "4");
    EXPECT_EQ(apply(""), "1|2|3|4|5|6|7");
    EXPECT_EQ(passedCount, 7);
    EXPECT_EQ(apply("Track Title|Contains|zzz"), "");
    EXPECT_EQ(outcome.message, query::kNoTrackMeetsCriteria);
    EXPECT_EQ(clause, "WHERE TitleTrack LIKE '*zzz*'");
    apply("Recorded|=|1965");
    EXPECT_EQ(apply("Recorded|=|1965", "", "Live|=|yes"), "2|5|7");
    EXPECT_EQ(outcome.message, kNotJoined);
    EXPECT_EQ(passedCount, 3);
}

const SortCaller kSource = SortCaller::Source;
const SortCaller kCompilation = SortCaller::Compilation;

// The order text of up to three levels named as the dialog's lists show them,
// "Key/Direction,,Key/Direction", an empty level not chosen.
QString order(SortCaller caller, const QString& captions) {
    query::SortLevels levels;
    const QStringList named = captions.split(',');
    for (qsizetype i = 0; i < named.size(); ++i) {
        const QStringList parts = named[i].split('/');
        if (parts.size() == 2)
            levels[i] = query::sortLevelFromCaptions(caller, parts[0], parts[1]).value();
    }
    return query::composeSortClause(levels, caller);
}

TEST(SortClause, ChosenLevelsJoinInLevelOrderSkippingEmptyOnes) {
    const std::tuple<SortCaller, const char*, const char*> cases[] = {
        {kSource, "", "ArtistSort, AlbumArtistSort, TitleAlbum, Item, Index "},
        {kCompilation, "", "ArtistSort, AlbumArtistSort, Album_Title, Item, Index "},
        {kSource, ",,Time/Descending", "Length DESC"},
        {kSource, "Track Title/ascending,,Recorded/DESCENDING", "TitleTrack ASC, MyRecorded DESC"},
        {kCompilation, "Album Performer/Descending,Recorded/Ascending,Album Title/Descending",
         "AlbumArtistSort DESC, RecordedStart ASC, Album_Title DESC"},
    };
    for (const auto& [caller, captions, expected] : cases)
        EXPECT_EQ(order(caller, captions), expected) << captions;
    EXPECT_EQ(query::composeSortClause({SortLevel{}, SortLevel{"Length", {}}}, kSource), "Length");
    EXPECT_EQ(query::sourceSortClause("Item"), "ORDER BY Item");
    EXPECT_FALSE(query::sortLevelFromCaptions(kCompilation, "Rating", "Ascending"));
    EXPECT_FALSE(query::sortLevelFromCaptions(kSource, "Time", "Upwards"));
}

TEST_F(SourceTools, SortDirectionsOrderAndTiesFallToTheNextLevel) {
    const auto titles = [&](const QString& captions) {
        return values(
            "SELECT * FROM tempsource " + query::sourceSortClause(order(kSource, captions)),
            "TitleTrack");
    };
    EXPECT_EQ(titles(""), "Title?|Indian Summer|Yesterday|Help!|Michelle|Nothing Compares|Peaches");
    EXPECT_EQ(titles("Time/Descending"),
              "Indian Summer|Help!|Nothing Compares|Michelle|Yesterday|Peaches|Title?");
    EXPECT_EQ(titles("Item/Ascending,Index/Descending,Track Title/Descending"),
              "Indian Summer|Title?|Peaches|Help!|Yesterday|Nothing Compares|Michelle");
    for (const query::SortKey& key : query::sortKeys(kSource))  // every key orders the source
        EXPECT_EQ(titles(key.caption + "/Descending").count('|'), 6) << key.field.toStdString();
}

}  // namespace
