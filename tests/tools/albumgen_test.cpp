#include "albumgen/albumgen.h"
#include "support/temp_dir.h"
#include "tools/mdb_tools.h"

#include <gtest/gtest.h>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <algorithm>
#include <map>
#include "support/paths.h"

namespace {

QByteArray bytesOf(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

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
        case jet4::Type::Text:
        case jet4::Type::Memo:
            return v.toString().isEmpty() ? QVariant() : v.toString();
        default:
            return v.toString();
    }
}

QStringList names(const std::vector<albumgen::TableRows>& tables) {
    QStringList out;
    for (const auto& t : tables)
        out << t.name;
    return out;
}

TEST(AlbumGenerator, SameSeedGivesTheSameFileAndAnotherSeedAnother) {
    testsupport::TempDir dir;
    albumgen::writeAlbumDatabase(dir.file("a.mdb"), {30, 5});
    albumgen::writeAlbumDatabase(dir.file("b.mdb"), {30, 5});
    albumgen::writeAlbumDatabase(dir.file("c.mdb"), {30, 6});
    EXPECT_FALSE(bytesOf(dir.file("a.mdb")).isEmpty());
    EXPECT_EQ(bytesOf(dir.file("a.mdb")), bytesOf(dir.file("b.mdb")));
    EXPECT_NE(bytesOf(dir.file("a.mdb")), bytesOf(dir.file("c.mdb")));

    const auto five = albumgen::generate({30, 5});
    const auto six = albumgen::generate({30, 6});
    EXPECT_EQ(five.albums.size(), 30u);
    EXPECT_NE(five.tracks.front().title + five.albums.front().title,
              six.tracks.front().title + six.albums.front().title);
}

TEST(AlbumGenerator, EveryWrittenRowReadsBackThroughMdbtools) {
    testsupport::TempDir dir;
    const albumgen::Options options{60, 11};
    const QString path = dir.file("albums.mdb");
    albumgen::writeAlbumDatabase(path, options);
    const auto tables = albumgen::tableRows(albumgen::generate(options));

    EXPECT_EQ(mdbtools::tables(path), names(tables));
    for (const albumgen::TableRows& table : tables) {
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
}

TEST(AlbumGenerator, WithoutRatingTheRatingTableIsMissing) {
    testsupport::TempDir dir;
    albumgen::writeAlbumDatabase(dir.file("plain.mdb"), {5, 1, false});
    EXPECT_EQ(mdbtools::tables(dir.file("plain.mdb")),
              QStringList(
                  {"Album", "Artist", "Track", "ArtistAlbumLink", "ArtistTrackLink", "Location"}));
    const auto plain = albumgen::generate({5, 1, false});
    EXPECT_TRUE(plain.ratings.empty());
    EXPECT_FALSE(names(albumgen::tableRows(plain)).contains("TrackRating"));
    EXPECT_EQ(names(albumgen::tableRows(albumgen::generate({5, 1}))),
              QStringList({"Album", "Artist", "Track", "ArtistAlbumLink", "ArtistTrackLink",
                           "TrackRating", "Location"}));
}

class GeneratedCollection : public ::testing::Test {
  protected:
    static void SetUpTestSuite() { c_ = new albumgen::Collection(albumgen::generate({300, 42})); }
    static void TearDownTestSuite() { delete c_; }

    template <typename T, typename P>
    static bool any(const std::vector<T>& list, P predicate) {
        return std::any_of(list.begin(), list.end(), predicate);
    }
    static std::map<qint32, int> counts(const std::vector<albumgen::Link>& links) {
        std::map<qint32, int> out;
        for (const auto& l : links)
            ++out[l.otherId];
        return out;
    }

    static albumgen::Collection* c_;
};
albumgen::Collection* GeneratedCollection::c_ = nullptr;

TEST_F(GeneratedCollection, HasAboutTwelveTracksPerAlbumAndConsistentKeys) {
    const auto& c = *c_;
    const double perAlbum = double(c.tracks.size()) / double(c.albums.size());
    EXPECT_GT(perAlbum, 10.5);
    EXPECT_LT(perAlbum, 13.5);
    QSet<qint32> trackIds, albumIds;
    for (const auto& t : c.tracks)
        trackIds.insert(t.id);
    for (const auto& a : c.albums)
        albumIds.insert(a.id);
    EXPECT_EQ(trackIds.size(), qsizetype(c.tracks.size()));
    for (const auto& t : c.tracks)
        ASSERT_TRUE(albumIds.contains(t.albumId));
    for (const auto& l : c.artistTrackLinks)
        ASSERT_TRUE(trackIds.contains(l.otherId) && l.artistId >= 1 &&
                    l.artistId <= qint32(c.artists.size()));
    for (const auto& l : c.artistAlbumLinks)
        ASSERT_TRUE(albumIds.contains(l.otherId));
    EXPECT_EQ(counts(c.artistTrackLinks).size(), c.tracks.size()) << "every track has a performer";
    EXPECT_EQ(counts(c.artistAlbumLinks).size(), c.albums.size()) << "every album has a performer";
}

TEST_F(GeneratedCollection, HasSeveralPerformersNowAndThen) {
    const auto trackPerformers = counts(c_->artistTrackLinks);
    const auto albumPerformers = counts(c_->artistAlbumLinks);
    auto several = [](const auto& entry) { return entry.second >= 2; };
    EXPECT_TRUE(std::any_of(trackPerformers.begin(), trackPerformers.end(), several));
    EXPECT_TRUE(std::any_of(albumPerformers.begin(), albumPerformers.end(), several));
    EXPECT_LT(std::count_if(trackPerformers.begin(), trackPerformers.end(), several),
              qsizetype(c_->tracks.size() / 3));
}

TEST_F(GeneratedCollection, SortNamesMoveTheToTheEnd) {
    const auto& artists = c_->artists;
    EXPECT_TRUE(any(artists, [](const auto& a) {
        return a.name == "The Beatles" && a.sortName == "Beatles, The";
    }));
    for (const auto& a : artists) {
        if (a.name.startsWith("The ") && a.name != "The The") {
            EXPECT_TRUE(a.sortName.endsWith(", The")) << a.sortName.toStdString();
        }
    }
    for (const QString name : {"Die Ärzte", "Björk", "Motörhead", "Sigur Rós", "Guns N' Roses"})
        EXPECT_TRUE(any(artists, [&](const auto& a) { return a.name == name; }))
            << name.toStdString();
    EXPECT_TRUE(any(artists, [](const auto& a) { return a.sortName.startsWith("O'Neil"); }));
}

TEST_F(GeneratedCollection, TracksHaveVersionsLiveRecordingsAndGaps) {
    const auto& t = c_->tracks;
    EXPECT_TRUE(any(t, [](const auto& x) { return x.version == "" && !x.version.isNull(); }));
    EXPECT_TRUE(any(t, [](const auto& x) { return x.version == "Remix"; }));
    EXPECT_TRUE(any(t, [](const auto& x) { return x.version == "Live" && x.live; }));
    EXPECT_TRUE(any(t, [](const auto& x) { return x.live; }));
    EXPECT_TRUE(any(t, [](const auto& x) { return !x.live; }));
    EXPECT_TRUE(any(t, [](const auto& x) { return x.recordedStart.isEmpty(); }));
    EXPECT_TRUE(any(t, [](const auto& x) { return x.title.contains('\''); }));
    const QRegularExpression date(R"(^ \d{4}(-\d\d-\d\d)?$)");
    for (const auto& x : t) {
        if (!x.recordedStart.isEmpty()) {
            ASSERT_TRUE(date.match(x.recordedStart).hasMatch()) << x.recordedStart.toStdString();
        }
    }
}

TEST_F(GeneratedCollection, SomeTracksLackARatingAndSomeAlbumsALocation) {
    QSet<qint32> ratingIds;
    for (const auto& r : c_->ratings)
        ratingIds.insert(r.id);
    EXPECT_EQ(ratingIds.size(), 5);
    const auto& t = c_->tracks;
    EXPECT_TRUE(any(t, [](const auto& x) { return !x.ratingId; }));
    EXPECT_TRUE(
        any(t, [&](const auto& x) { return x.ratingId && !ratingIds.contains(*x.ratingId); }));
    EXPECT_TRUE(
        any(t, [&](const auto& x) { return x.ratingId && ratingIds.contains(*x.ratingId); }));
    EXPECT_TRUE(any(c_->albums, [](const auto& a) { return !a.locationId; }));
    EXPECT_TRUE(any(c_->albums, [](const auto& a) { return a.locationId.has_value(); }));
}

TEST_F(GeneratedCollection, SomeNotesAreLongerThanAPage) {
    auto longer = [](const QString& s) { return s.size() > 4096; };
    EXPECT_TRUE(any(c_->tracks, [&](const auto& x) { return longer(x.comment); }) ||
                any(c_->albums, [&](const auto& a) { return longer(a.notes); }));
    EXPECT_TRUE(any(c_->tracks, [](const auto& x) { return x.comment.isNull(); }));
}

TEST(MakeAlbums, WritesTheRequestedCollection) {
    const QString program = testsupport::programPath("make-albums");
    if (!QFile::exists(program))
        GTEST_SKIP() << "make-albums is not built";
    testsupport::TempDir dir;
    const QString out = dir.file("made.mdb");
    EXPECT_EQ(QProcess::execute(program, {out, "--albums", "12", "--seed", "9", "--no-rating"}), 0);
    albumgen::writeAlbumDatabase(dir.file("direct.mdb"), {12, 9, false});
    EXPECT_EQ(bytesOf(out), bytesOf(dir.file("direct.mdb")));
    EXPECT_EQ(QProcess::execute(program, {out, "--albums", "many"}), 2);
}

}  // namespace
