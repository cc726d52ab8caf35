#include <QFile>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <functional>

#include "album/album_builder.h"
#include "album/album_fixture.h"
#include "jet4/jet4.h"
#include "support/databases.h"
#include "support/old_compilations.h"

namespace albumtest {
namespace {

void writeBytes(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(bytes);
}

// A good album file of a few albums, read back as bytes to be damaged.
QByteArray albumFileBytes(const QString& path) {
    albumgen::Options options;
    options.albums = 12;
    albumgen::writeAlbumDatabase(path, options);
    return fileBytes(path);
}

struct Damage {
    const char* name;
    std::function<void(const QString& path)> make;
    bool structureMessage;  // the file is a database, just not an album database
};

void PrintTo(const Damage& damage, std::ostream* out) {
    *out << damage.name;
}

const Damage kDamages[] = {
    {"SqliteFileWithOtherTables",
     [](const QString& path) {
         testsupport::execRaw(path,
                              "CREATE TABLE Recipe (Name TEXT); "
                              "INSERT INTO Recipe VALUES ('Soup')");
     },
     true},
    {"TextFile", [](const QString& path) { writeBytes(path, "Albums I own:\nBookends\n"); }, false},
    {"RandomBytes",
     [](const QString& path) {
         QByteArray bytes(64 * 1024, '\0');
         QRandomGenerator random(7);
         for (char& c : bytes)
             c = char(random.bounded(256));
         writeBytes(path, bytes);
     },
     false},
    {"AccessFileCutMidPage",
     [](const QString& path) {
         const QByteArray whole = albumFileBytes(path);
         writeBytes(path, whole.left(whole.size() / 2 + 1000));
     },
     false},
    {"AccessFileCutInHalfAtAPageEnd",
     [](const QString& path) {
         const QByteArray whole = albumFileBytes(path);
         writeBytes(path, whole.left(whole.size() / 2));
     },
     false},
    {"AccessFileWithPagesOverwritten",
     [](const QString& path) {
         // Pages 1 to 3 hold the catalogue and the first table definitions; the header stays.
         QByteArray bytes = albumFileBytes(path);
         bytes.replace(4096, 3 * 4096, QByteArray(3 * 4096, char(0xA5)));
         writeBytes(path, bytes);
     },
     false},
};

class DamagedAlbumFile : public AlbumFileTest, public ::testing::WithParamInterface<Damage> {};

TEST_P(DamagedAlbumFile, GivesAMessageAndLeavesTheCompilationsWhole) {
    const QString damaged = dir.file("damaged.mdb");
    GetParam().make(damaged);
    editor.getTracksEnabled = true;
    connect(damaged);
    ASSERT_EQ(dialogs.messages().size(), 1u);
    const QString message = dialogs.messages()[0].text;
    if (GetParam().structureMessage)
        EXPECT_EQ(message, store::kNotAnAlbumDatabase);
    else
        EXPECT_TRUE(message.contains("damaged.mdb")) << message.toStdString();
    EXPECT_EQ(dialogs.messages()[0].icon, platform::MessageIcon::Exclamation);
    EXPECT_FALSE(editor.getTracksEnabled);
    EXPECT_FALSE(editor.albumConnected);
    EXPECT_FALSE(state.albumHasRating);

    // The source stays empty, and a good file connects afterwards as usual.
    store::buildTempSource(database, state);
    EXPECT_EQ(state.passedCount, 0);
    const QString good = dir.file("good.mdb");
    albumgen::Options options;
    options.albums = 3;
    albumgen::writeAlbumDatabase(good, options);
    connectAndBuild(good);
    EXPECT_TRUE(editor.getTracksEnabled);
    EXPECT_EQ(state.passedCount,
              qint64(expectedSourceRows(albumgen::tableRows(albumgen::generate(options))).size()));

    store::dropAlbumLinks(database);
    database.close();
    EXPECT_EQ(testsupport::integrityCheck(compilationPath), "ok");
    EXPECT_EQ(compilationCount(), "1");
}

INSTANTIATE_TEST_SUITE_P(Kinds, DamagedAlbumFile, ::testing::ValuesIn(kDamages),
                         [](const auto& info) { return std::string(info.param.name); });

// A damaged page reads as no rows without an error from the reader: the connect says which
// table lost rows, and the source holds what could be read.
TEST_F(AlbumFileTest, ATableThatCannotBeReadWholeIsReportedAtConnect) {
    const QString path = dir.file("albums; scratched.mdb");
    albumgen::Options options;
    options.albums = 12;
    albumgen::writeAlbumDatabase(path, options);
    const qint64 whole =
        qint64(expectedSourceRows(albumgen::tableRows(albumgen::generate(options))).size());
    testsupport::zeroADataPageOfTheLargestTable(path, jet4::Format::Jet4);

    connectAndBuild(path);
    ASSERT_EQ(dialogs.messages().size(), 1u);
    const QString message = dialogs.messages()[0].text;
    EXPECT_TRUE(message.startsWith("The album database '" + path + "' is damaged"))
        << message.toStdString();
    EXPECT_TRUE(message.contains(QRegularExpression(": (\\d+) rows expected, (\\d+) read\r\n")))
        << message.toStdString();
    EXPECT_EQ(dialogs.messages()[0].icon, platform::MessageIcon::Exclamation);
    EXPECT_TRUE(editor.albumConnected);
    EXPECT_GT(state.passedCount, 0);
    EXPECT_LT(state.passedCount, whole);
}

TEST_F(AlbumFileTest, ACompilationDatabaseChosenAsAlbumDatabaseGetsTheStructureMessage) {
    const QString other = dir.file("other compilations.mdb");
    testsupport::createCompilationDatabase(other);
    connect(other);
    ASSERT_EQ(dialogs.messages().size(), 1u);
    EXPECT_EQ(dialogs.messages()[0].text, store::kNotAnAlbumDatabase);
    EXPECT_EQ(dialogs.messages()[0].title, "Mixorama");
    EXPECT_FALSE(editor.getTracksEnabled);
}

TEST_F(AlbumFileTest, AnAccessFileMissingAnAlbumTableGetsTheStructureMessage) {
    // Everything but the performer links of the tracks.
    CollectionBuilder builder(true);
    builder.album("Bookends", "Simon & Garfunkel", {builder.artist("Paul Simon", "Simon")}, {});
    std::vector<jet4::Table> tables;
    for (const albumgen::TableRows& rows : albumgen::tableRows(builder.collection())) {
        if (rows.name != "ArtistTrackLink")
            tables.emplace_back(rows.name, rows.columns);
    }
    const QString path = dir.file("partial.mdb");
    jet4::writeDatabase(path, tables);
    connect(path);
    ASSERT_EQ(dialogs.messages().size(), 1u);
    EXPECT_EQ(dialogs.messages()[0].text, store::kNotAnAlbumDatabase);
    EXPECT_FALSE(editor.albumConnected);
}

}  // namespace
}  // namespace albumtest
