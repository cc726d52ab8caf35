#include "album/album_fixture.h"

namespace albumtest {
namespace {

// A generated collection of a few hundred tracks, with and without the rating table.
class GeneratedCollection : public AlbumFileTest, public ::testing::WithParamInterface<bool> {
  protected:
    QString writeAlbums() {
        albumgen::Options options;
        options.albums = 30;
        options.seed = 20240611;
        options.withRating = GetParam();
        const QString path = dir.file("generated.mdb");
        albumgen::writeAlbumDatabase(path, options);
        expected = expectedSourceRows(albumgen::tableRows(albumgen::generate(options)));
        return path;
    }

    std::vector<SourceRow> expected;
};

TEST_P(GeneratedCollection, SourceMatchesTheJoinedTablesRowByRow) {
    const QString albums = writeAlbums();
    const QByteArray before = fileBytes(albums);
    connectAndBuild(albums);
    ASSERT_TRUE(dialogs.messages().empty()) << dialogs.lastMessageText().toStdString();
    EXPECT_EQ(state.albumHasRating, GetParam());
    ASSERT_GT(expected.size(), 300u);
    EXPECT_EQ(state.passedCount, qint64(expected.size()));
    const std::vector<SourceRow> rows = sourceRows();
    EXPECT_EQ(multisetDifference(expected, rows), "");
    for (size_t i = 1; i < rows.size(); ++i) {
        ASSERT_TRUE(inSourceOrder(rows[i - 1], rows[i]))
            << "row " << i << " stands before its predecessor:\n"
            << rows[i - 1].join(" | ").toStdString() << "\n"
            << rows[i].join(" | ").toStdString();
    }
    EXPECT_TRUE(fileBytes(albums) == before);
}

INSTANTIATE_TEST_SUITE_P(Rating, GeneratedCollection, ::testing::Bool(), [](const auto& info) {
    return info.param ? "WithTrackRating" : "WithoutTrackRating";
});

}  // namespace
}  // namespace albumtest
