#include <QFile>
#include <QRegularExpression>

#include "album/album_fixture.h"
#include "support/old_compilations.h"

namespace albumtest {
namespace {

// The bytes of a good album file of a few albums, written at path, to be damaged.
QByteArray albumFileBytes(const QString& path) {
    albumgen::writeAlbumDatabase(path, {12, 1});
    return testsupport::fileBytes(path);
}

// A file an album database was expected in: its bytes, made with the help of a scratch file.
struct Damage {
    const char* name;
    QByteArray (*bytes)(const QString& scratch);
    bool structureMessage;  // a database, just not an album database
};

void PrintTo(const Damage& damage, std::ostream* out) {
    *out << damage.name;
}

const Damage kDamages[] = {
    {"SqliteFileWithOtherTables",
     [](const QString& scratch) {
         testsupport::execRaw(scratch, "CREATE TABLE Recipe (Name TEXT)");
         return testsupport::fileBytes(scratch);
     },
     true},
    {"AccessFileWithoutTheTracksPerformerLinks",
     [](const QString& scratch) {
         std::vector<jet4::Table> tables;
         for (const albumgen::TableRows& rows : albumgen::tableRows(albumgen::generate({3, 1}))) {
             if (rows.name != "ArtistTrackLink")
                 tables.emplace_back(rows.name, rows.columns);
         }
         jet4::writeDatabase(scratch, tables);
         return testsupport::fileBytes(scratch);
     },
     true},
    {"AccessFileCutInHalfAtAPageEnd",
     [](const QString& scratch) {
         const QByteArray whole = albumFileBytes(scratch);
         return whole.left(whole.size() / 2);
     },
     false},
    // Pages 1 to 3 hold the catalogue and the first table definitions; the header stays.
    {"AccessFileWithPagesOverwritten",
     [](const QString& scratch) {
         return albumFileBytes(scratch).replace(4096, 3 * 4096, QByteArray(3 * 4096, '\xA5'));
     },
     false},
};

class DamagedAlbumFile : public AlbumFileTest, public ::testing::WithParamInterface<Damage> {};

TEST_P(DamagedAlbumFile, GivesAMessageAndLeavesTheCompilationsWhole) {
    const QString damaged = dir.file("damaged.mdb");
    QFile file(damaged);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(GetParam().bytes(dir.file("scratch")));
    file.close();
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
    albumgen::writeAlbumDatabase(good, {3, 1});
    connectAndBuild(good);
    EXPECT_TRUE(editor.getTracksEnabled);
    EXPECT_EQ(state.passedCount, expectedSourceRows(albumgen::generate({3, 1})).size());

    store::dropAlbumLinks(database);
    database.close();
    EXPECT_EQ(testsupport::integrityCheck(compilationPath), "ok");
    EXPECT_EQ(testsupport::queryRaw(compilationPath, "SELECT count(*) FROM Compilation"), "1");
}

INSTANTIATE_TEST_SUITE_P(Kinds, DamagedAlbumFile, ::testing::ValuesIn(kDamages),
                         [](const auto& info) { return std::string(info.param.name); });

// A damaged page reads as no rows without an error from the reader: the connect says which
// table lost rows, and the source holds what could be read.
TEST_F(AlbumFileTest, ATableThatCannotBeReadWholeIsReportedAtConnect) {
    const QString path = dir.file("albums; scratched.mdb");
    albumgen::writeAlbumDatabase(path, {12, 1});
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
    EXPECT_LT(state.passedCount, expectedSourceRows(albumgen::generate({12, 1})).size());
}

}  // namespace
}  // namespace albumtest
