#include <gtest/gtest.h>

#include <QStringList>

#include "engine/recordset.h"
#include "goto_fixture.h"
#include "query/sort_clause.h"

using query::SortCaller;
using query::SortLevel;
using query::SortLevels;

namespace {

// A level as the dialog forms it from the captions chosen in its two lists.
SortLevel level(SortCaller caller, const QString& key, const QString& direction) {
    const std::optional<SortLevel> chosen = query::sortLevelFromCaptions(caller, key, direction);
    EXPECT_TRUE(chosen.has_value()) << key.toStdString() << " " << direction.toStdString();
    return chosen.value_or(SortLevel{});
}

QStringList captionsOf(SortCaller caller) {
    QStringList captions;
    for (const query::SortKey& key : query::sortKeys(caller)) {
        captions << key.caption;
    }
    return captions;
}

}  // namespace

TEST(SortClause, NoKeyChosenOrdersTheSourceAsItWasBuilt) {
    EXPECT_EQ(query::sourceSortClause(query::composeSortClause({}, SortCaller::Source)),
              "ORDER BY ArtistSort, AlbumArtistSort, TitleAlbum, Item, Index ");
    EXPECT_EQ(query::composeSortClause({}, SortCaller::Compilation),
              "ArtistSort, AlbumArtistSort, Album_Title, Item, Index ");
}

TEST(SortClause, ChosenLevelsJoinInLevelOrderSkippingEmptyOnes) {
    SortLevels onlyThird;
    onlyThird[2] = level(SortCaller::Source, "Time", "Descending");
    EXPECT_EQ(query::sourceSortClause(query::composeSortClause(onlyThird, SortCaller::Source)),
              "ORDER BY Length DESC");

    SortLevels firstAndThird;
    firstAndThird[0] = level(SortCaller::Source, "Track Title", "Ascending");
    firstAndThird[2] = level(SortCaller::Source, "Recorded", "Descending");
    EXPECT_EQ(query::sourceSortClause(query::composeSortClause(firstAndThird, SortCaller::Source)),
              "ORDER BY TitleTrack ASC, MyRecorded DESC");

    const SortLevels all = {level(SortCaller::Compilation, "Album Performer", "Descending"),
                            level(SortCaller::Compilation, "Recorded", "Ascending"),
                            level(SortCaller::Compilation, "Track Title", "Descending")};
    EXPECT_EQ(query::composeSortClause(all, SortCaller::Compilation),
              "AlbumArtistSort DESC, RecordedStart ASC, Track_Title DESC");
}

TEST(SortClause, AKeyWithoutDirectionSortsTheEngineWay) {
    SortLevels levels;
    levels[1] = SortLevel{"Length", ""};
    EXPECT_EQ(query::composeSortClause(levels, SortCaller::Source), "Length");
}

TEST(SortClause, KeyListsDifferByCaller) {
    EXPECT_EQ(captionsOf(SortCaller::Source),
              QStringList({"Track Performer", "Track Title", "Recorded", "Time", "Rating", "Live",
                           "Version", "Album Title", "Album Performer", "Item", "Index"}));
    EXPECT_EQ(captionsOf(SortCaller::Compilation),
              QStringList({"Track Performer", "Track Title", "Time", "Recorded", "Album Title",
                           "Live", "Version", "Album Performer", "Item", "Index"}));
    EXPECT_EQ(query::sortDialogCaption(SortCaller::Source), "Sort Source");
    EXPECT_EQ(query::sortDialogCaption(SortCaller::Compilation), "Sort Tracks on Compilation");
    // The performers sort by their sort names; the album title is named differently per table.
    EXPECT_EQ(level(SortCaller::Source, "Track Performer", "Ascending").field, "ArtistSort");
    EXPECT_EQ(level(SortCaller::Source, "album title", "ascending").field, "TitleAlbum");
    EXPECT_EQ(level(SortCaller::Compilation, "Album Title", "Ascending").field, "Album_Title");
}

TEST(SortClause, UnknownCaptionsGiveNoLevel) {
    EXPECT_FALSE(query::sortLevelFromCaptions(SortCaller::Compilation, "Rating", "Ascending"));
    EXPECT_FALSE(query::sortLevelFromCaptions(SortCaller::Source, "Time", "Upwards"));
    EXPECT_FALSE(query::sortLevelFromCaptions(SortCaller::Source, "", "Ascending"));
}

// The clauses run on the source as the picker binds it.
class SourceSort : public GotoFixture {
  protected:
    QStringList titlesOrderedBy(const QString& orderText) {
        engine::Recordset rows = db.openRecordset(QStringLiteral("SELECT * FROM tempsource ") +
                                                  query::sourceSortClause(orderText));
        QStringList titles;
        for (; !rows.eof(); rows.moveNext()) {
            titles << rows.value("TitleTrack").toString();
        }
        return titles;
    }
};

// The Beatles' tracks come by album title: Anthology, Help!, Rubber Soul.
TEST_F(SourceSort, TheDefaultOrderRunsOnTempSource) {
    EXPECT_EQ(titlesOrderedBy(query::composeSortClause({}, SortCaller::Source)),
              QStringList({"Title?", "Indian Summer", "Yesterday", "Help!", "Michelle",
                           "Nothing Compares", "Peaches"}));
}

TEST_F(SourceSort, EverySourceKeyRunsInBothDirections) {
    for (const query::SortKey& key : query::sortKeys(SortCaller::Source)) {
        for (const query::SortDirection& direction : query::sortDirections()) {
            const SortLevels levels = {SortLevel{key.field, direction.value}, SortLevel{},
                                       SortLevel{}};
            EXPECT_EQ(titlesOrderedBy(query::composeSortClause(levels, SortCaller::Source)).size(),
                      7)
                << key.field.toStdString() << direction.value.toStdString();
        }
    }
}

TEST_F(SourceSort, TimeDescendingPutsTheLongestFirstAndNoLengthLast) {
    SortLevels levels;
    levels[2] = level(SortCaller::Source, "Time", "Descending");
    EXPECT_EQ(titlesOrderedBy(query::composeSortClause(levels, SortCaller::Source)),
              QStringList({"Indian Summer", "Help!", "Nothing Compares", "Michelle", "Yesterday",
                           "Peaches", "Title?"}));
}
