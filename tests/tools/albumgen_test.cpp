#include "albumgen/albumgen.h"
#include "support/paths.h"
#include "support/temp_dir.h"
#include "tools/mdb_tools.h"

#include <gtest/gtest.h>
#include <QProcess>
#include <QSet>
#include <algorithm>
#include <map>

namespace {

using testsupport::fileBytes;

// A generated value as mdb-export prints it. mdbtools shows empty texts like Null.
QString asExported(const QVariant& v, jet4::Type type) {
    if (!v.isValid())
        return mdbtools::kNullText;
    switch (type) {
        case jet4::Type::Boolean:
            return v.toBool() ? "1" : "0";
        case jet4::Type::Currency:
            return QString::number(v.toDouble(), 'f', 4);
        case jet4::Type::DateTime:
            return v.toDateTime().toString("yyyy-MM-dd hh:mm:ss");
        default:
            return v.toString().isEmpty() ? mdbtools::kNullText : v.toString();
    }
}

// The same seed gives the same file, another seed another; make-albums writes the same file.
TEST(AlbumGenerator, SameSeedGivesTheSameFileAndAnotherSeedAnother) {
    testsupport::TempDir dir;
    albumgen::writeAlbumDatabase(dir.file("a.mdb"), {12, 9, false});
    albumgen::writeAlbumDatabase(dir.file("b.mdb"), {12, 10, false});
    EXPECT_NE(fileBytes(dir.file("a.mdb")), fileBytes(dir.file("b.mdb")));
    const QString program = testsupport::programPath("make-albums");
    if (!QFile::exists(program))
        GTEST_SKIP() << "make-albums is not built";
    const QString made = dir.file("made.mdb");
    EXPECT_EQ(QProcess::execute(program, {made, "--albums", "12", "--seed", "9", "--no-rating"}),
              0);
    EXPECT_EQ(fileBytes(made), fileBytes(dir.file("a.mdb")));
    EXPECT_EQ(QProcess::execute(program, {made, "--albums", "many"}), 2);
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
            std::vector<std::pair<QString, QString>> columns = mdbtools::columns(path, table.name);
            ASSERT_EQ(columns.size(), table.columns.size());
            for (size_t c = 0; c < columns.size(); ++c)
                EXPECT_EQ(columns[c].first, table.columns[c].name);
            const auto read = mdbtools::rows(path, table.name);
            ASSERT_EQ(read.size(), table.rows.size()) << table.name.toStdString();
            for (size_t r = 0; r < read.size(); ++r) {
                QStringList expected;
                for (size_t c = 0; c < table.columns.size(); ++c)
                    expected << asExported(table.rows[r][c], table.columns[c].type);
                ASSERT_EQ(read[r], expected) << table.name.toStdString() << " row " << r;
            }
        }
        EXPECT_EQ(mdbtools::tables(path), names);
        EXPECT_EQ(names.contains("TrackRating"), withRating);
    }
}

// The collection holds the cases of album data that the album tests rely on.
TEST(GeneratedCollection, HoldsTheCasesOfAlbumData) {
    const albumgen::Collection c = albumgen::generate({300, 42});
    const auto tracks = [&](auto test) {
        return std::any_of(c.tracks.begin(), c.tracks.end(), test);
    };
    QSet<qint32> ratings;
    for (const auto& r : c.ratings)
        ratings.insert(r.id);
    std::map<qint32, int> performers[2];  // of each track, of each album
    for (const auto& l : c.artistTrackLinks)
        ++performers[0][l.otherId];
    for (const auto& l : c.artistAlbumLinks)
        ++performers[1][l.otherId];
    const auto several = [](const auto& entry) { return entry.second > 1; };
    const std::pair<const char*, bool> facts[] = {
        {"a performer for every track and album",
         performers[0].size() == c.tracks.size() && performers[1].size() == c.albums.size()},
        {"tracks and albums of several performers",
         std::any_of(performers[0].begin(), performers[0].end(), several) &&
             std::any_of(performers[1].begin(), performers[1].end(), several)},
        {"empty versions", tracks([](const auto& t) { return t.version == ""; })},
        {"a date only", tracks([](const auto& t) { return t.recordedStart.size() == 11; })},
        {"no date", tracks([](const auto& t) { return t.recordedStart.isEmpty(); })},
        {"no rating", tracks([](const auto& t) { return !t.ratingId; })},
        {"a rating not held",
         tracks([&](const auto& t) { return t.ratingId && !ratings.contains(*t.ratingId); })},
        {"albums without location", std::any_of(c.albums.begin(), c.albums.end(),
                                                [](const auto& a) { return !a.locationId; })},
    };
    for (const auto& [fact, holds] : facts)
        EXPECT_TRUE(holds) << fact;
}

}  // namespace
