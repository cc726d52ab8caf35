#include "albumgen/albumgen.h"
#include "support/paths.h"
#include "support/temp_dir.h"
#include "tools/mdb_tools.h"

#include <gtest/gtest.h>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <algorithm>
#include <map>

namespace {

using testsupport::fileBytes;

// A generated value as mdb-export prints it. mdbtools shows empty texts like Null.
QVariant asExported(const QVariant& v, jet4::Type type) {
    if (!v.isValid())
        return {};
    switch (type) {
        case jet4::Type::Boolean:
            return v.toBool() ? "1" : "0";
        case jet4::Type::Currency:
            return QString::number(v.toDouble(), 'f', 4);
        case jet4::Type::DateTime:
            return v.toDateTime().toString("yyyy-MM-dd hh:mm:ss");
        default:
            return v.toString().isEmpty() ? QVariant() : v.toString();
    }
}

TEST(AlbumGenerator, SameSeedGivesTheSameFileAndAnotherSeedAnother) {
    testsupport::TempDir dir;
    for (const auto& [name, seed] : {std::pair{"a.mdb", 5}, {"b.mdb", 5}, {"c.mdb", 6}})
        albumgen::writeAlbumDatabase(dir.file(name), {30, quint32(seed)});
    EXPECT_FALSE(fileBytes(dir.file("a.mdb")).isEmpty());
    EXPECT_EQ(fileBytes(dir.file("a.mdb")), fileBytes(dir.file("b.mdb")));
    EXPECT_NE(fileBytes(dir.file("a.mdb")), fileBytes(dir.file("c.mdb")));
}

TEST(AlbumGenerator, EveryWrittenRowReadsBackThroughMdbtools) {
    testsupport::TempDir dir;
    for (const bool withRating : {true, false}) {
        SCOPED_TRACE(withRating ? "with rating" : "without rating");
        const albumgen::Options options{60, 11, withRating};
        const QString path = dir.file(withRating ? "rated.mdb" : "plain.mdb");
        albumgen::writeAlbumDatabase(path, options);
        QStringList names;
        for (const albumgen::TableRows& table : albumgen::tableRows(albumgen::generate(options))) {
            names << table.name;
            QStringList columns;
            for (const jet4::Column& c : table.columns)
                columns << c.name;
            EXPECT_EQ(mdbtools::header(path, table.name), columns);
            const auto read = mdbtools::rows(path, table.name);
            ASSERT_EQ(read.size(), table.rows.size()) << table.name.toStdString();
            for (size_t r = 0; r < read.size(); ++r) {
                QVariantList expected;
                for (size_t c = 0; c < table.columns.size(); ++c)
                    expected << asExported(table.rows[r][c], table.columns[c].type);
                ASSERT_EQ(read[r], expected) << table.name.toStdString() << " row " << r;
            }
        }
        EXPECT_EQ(mdbtools::tables(path), names);
        EXPECT_EQ(names.contains("TrackRating"), withRating);
        EXPECT_EQ(names.size(), withRating ? 7 : 6);
    }
}

// The collection holds the cases real album data has, and its keys agree.
TEST(GeneratedCollection, HoldsTheCasesOfAlbumData) {
    const albumgen::Collection c = albumgen::generate({300, 42});
    const auto any = [](const auto& list, auto test) {
        return std::any_of(list.begin(), list.end(), test);
    };
    const auto all = [](const auto& list, auto test) {
        return std::all_of(list.begin(), list.end(), test);
    };
    QSet<qint32> trackIds, albumIds, ratingIds;
    for (const auto& t : c.tracks)
        trackIds.insert(t.id);
    for (const auto& a : c.albums)
        albumIds.insert(a.id);
    for (const auto& r : c.ratings)
        ratingIds.insert(r.id);
    std::map<qint32, int> performers[2];  // of each track, of each album
    for (const auto& l : c.artistTrackLinks)
        ++performers[0][l.otherId];
    for (const auto& l : c.artistAlbumLinks)
        ++performers[1][l.otherId];
    const auto several = [](const auto& entry) { return entry.second >= 2; };
    const QRegularExpression date(R"(^( \d{4}(-\d\d-\d\d)?)?$)");
    const QStringList names{"Die Ärzte", "Björk", "Motörhead", "Sigur Rós", "Guns N' Roses"};

    const std::pair<const char*, bool> facts[] = {
        {"keys that agree",
         trackIds.size() == qsizetype(c.tracks.size()) &&
             all(c.tracks, [&](const auto& t) { return albumIds.contains(t.albumId); }) &&
             all(c.artistTrackLinks, [&](const auto& l) { return trackIds.contains(l.otherId); }) &&
             all(c.artistAlbumLinks, [&](const auto& l) { return albumIds.contains(l.otherId); })},
        {"a performer for everything",
         performers[0].size() == c.tracks.size() && performers[1].size() == c.albums.size()},
        {"several performers now and then",
         any(performers[0], several) && any(performers[1], several)},
        {"The moved to the end",
         all(c.artists,
             [](const auto& a) {
                 return !a.name.startsWith("The ") || a.name == "The The" ||
                        a.sortName.endsWith(", The");
             }) &&
             any(c.artists, [](const auto& a) { return a.sortName == "Beatles, The"; })},
        {"accents and apostrophes",
         all(names,
             [&](const QString& n) {
                 return any(c.artists, [&](const auto& a) { return a.name == n; });
             }) &&
             any(c.tracks, [](const auto& t) { return t.title.contains('\''); })},
        {"empty versions, remixes, live ones",
         any(c.tracks, [](const auto& t) { return t.version == "" && !t.version.isNull(); }) &&
             any(c.tracks, [](const auto& t) { return t.version == "Remix"; }) &&
             any(c.tracks, [](const auto& t) { return t.version == "Live" && t.live; })},
        {"recording dates ' yyyy', ' yyyy-mm-dd' or none",
         all(c.tracks, [&](const auto& t) { return date.match(t.recordedStart).hasMatch(); }) &&
             any(c.tracks, [](const auto& t) { return t.recordedStart.isEmpty(); })},
        {"no rating, a rating not held, a rating held",
         ratingIds.size() == 5 && any(c.tracks, [](const auto& t) { return !t.ratingId; }) &&
             any(c.tracks,
                 [&](const auto& t) { return t.ratingId && !ratingIds.contains(*t.ratingId); }) &&
             any(c.tracks,
                 [&](const auto& t) { return t.ratingId && ratingIds.contains(*t.ratingId); })},
        {"albums with and without location",
         any(c.albums, [](const auto& a) { return !a.locationId; }) &&
             any(c.albums, [](const auto& a) { return a.locationId.has_value(); })},
        {"notes longer than a page, and none",
         any(c.albums, [](const auto& a) { return a.notes.size() > 4096; }) ||
             any(c.tracks, [](const auto& t) { return t.comment.size() > 4096; })},
        {"no comment", any(c.tracks, [](const auto& t) { return t.comment.isNull(); })},
    };
    for (const auto& [fact, holds] : facts)
        EXPECT_TRUE(holds) << fact;
}

TEST(MakeAlbums, WritesTheRequestedCollection) {
    const QString program = testsupport::programPath("make-albums");
    if (!QFile::exists(program))
        GTEST_SKIP() << "make-albums is not built";
    testsupport::TempDir dir;
    const QString out = dir.file("made.mdb");
    EXPECT_EQ(QProcess::execute(program, {out, "--albums", "12", "--seed", "9", "--no-rating"}), 0);
    albumgen::writeAlbumDatabase(dir.file("direct.mdb"), {12, 9, false});
    EXPECT_EQ(fileBytes(out), fileBytes(dir.file("direct.mdb")));
    EXPECT_EQ(QProcess::execute(program, {out, "--albums", "many"}), 2);
}

}  // namespace
