#include "assembly/performer_tree.h"

#include <gtest/gtest.h>

#include "engine/database.h"
#include "engine/jet_error.h"
#include "engine/workspace.h"
#include "query/filter_clause.h"
#include "support/databases.h"
#include "support/temp_dir.h"

namespace {

// A compilation database whose TempSource holds a few performers; "Ghost" has no sort form,
// "Nobody" an empty one.
class PerformerTreeTest : public ::testing::Test {
  protected:
    void SetUp() override {
        testsupport::createCompilationDatabase(path);
        database = engine::Workspace::defaultWorkspace().openDatabase(path);
        testsupport::execOnConnection(database, R"sql(
            CREATE TEMP TABLE TempSource (ArtistSort TEXT COLLATE MIXORAMA_TEXT, PerformerTrack TEXT,
                                     TitleTrack TEXT COLLATE MIXORAMA_TEXT,
                                     TitleAlbum TEXT COLLATE MIXORAMA_TEXT, Length INTEGER);
            INSERT INTO TempSource VALUES
                ('Beatles, The', 'The Beatles', 'Yesterday', 'Help', 125),
                ('Beatles, The', 'The Beatles', 'Help!', 'Help', 140),
                ('Beatles, The', 'The Beatles', 'Yesterday', 'Anthology 1', 160),
                ('Beatles, The', 'The Beatles', 'Yesterday', 'Help', 125),
                ('Abba', 'Abba', 'Waterloo', 'Waterloo', 170),
                ('O''Neil', 'O''Neil', 'Don''t Stop', 'Fits [Live]', 583),
                (NULL, 'Ghost', 'Boo', 'Haunted', 100),
                ('', 'Nobody', 'Silence', 'Quiet', 90);
        )sql");
    }
    void TearDown() override { engine::Workspace::defaultWorkspace().close(); }

    bool hasNavigateQuery() const {
        return database.queryDefNames().contains(assembly::kNavigateQuery, Qt::CaseInsensitive);
    }
    // The TempSource title the criterion finds first, or "no match".
    QString foundTitle(const QString& criterion) {
        engine::Recordset rows = database.openRecordset(QStringLiteral("TempSource"));
        rows.findFirst(criterion);
        return rows.noMatch() ? QStringLiteral("no match")
                              : rows.value("TitleTrack").toString() + " / " +
                                    rows.value("TitleAlbum").toString();
    }

    testsupport::TempDir dir;
    const QString path = dir.file("navigate.mdb");
    engine::Database database;
};

TEST_F(PerformerTreeTest, StatementsReadThePlainSourceOrTheStoredQuery) {
    EXPECT_EQ(assembly::getRootNodeData(database, "TempSource"),
              "SELECT DISTINCT ArtistSort FROM TempSource  WHERE ArtistSort <> '' ORDER BY "
              "ArtistSort ");
    EXPECT_EQ(assembly::childNodeData(database, "TempSource", "O'Neil"),
              "SELECT DISTINCT ArtistSort, TitleTrack, TitleAlbum FROM TempSource  WHERE "
              "ArtistSort= 'O''Neil' ORDER BY TitleTrack, TitleAlbum ");
    EXPECT_FALSE(hasNavigateQuery());

    // Any other record source, an unfiltered requery too, goes through queryNavigate, which
    // is replaced at every request.
    const QString requeried = query::sourceRecordSource("", "");
    EXPECT_EQ(assembly::getRootNodeData(database, requeried),
              "SELECT DISTINCT ArtistSort FROM queryNavigate  WHERE ArtistSort <> '' ORDER BY "
              "ArtistSort ");
    EXPECT_TRUE(hasNavigateQuery());
    EXPECT_EQ(
        assembly::childNodeData(database, "SELECT * FROM tempsource WHERE Length > 150", "Abba"),
        "SELECT DISTINCT ArtistSort, TitleTrack, TitleAlbum FROM queryNavigate  WHERE "
        "ArtistSort= 'Abba' ORDER BY TitleTrack, TitleAlbum ");
    EXPECT_EQ(
        assembly::readRootNodes(database, "SELECT * FROM tempsource WHERE Length > 150").texts,
        QStringList({"Abba", "Beatles, The", "O'Neil"}));

    // The plain source drops the query of an earlier request.
    assembly::getRootNodeData(database, "TempSource");
    EXPECT_FALSE(hasNavigateQuery());
    assembly::deleteNavigateQuery(database);  // none left: no failure
}

TEST_F(PerformerTreeTest, RootListsDistinctNonEmptyPerformersInOrder) {
    const assembly::NodeLevel root = assembly::readRootNodes(database, "TempSource");
    EXPECT_EQ(root.texts, QStringList({"Abba", "Beatles, The", "O'Neil"}));
    EXPECT_FALSE(root.incomplete);
}

TEST_F(PerformerTreeTest, ChildrenAreDistinctTitleAlbumPairsInOrder) {
    const QStringList beatles = assembly::readChildNodes(database, "TempSource", "Beatles, The");
    EXPECT_EQ(beatles,
              QStringList({"Help!   [Help]", "Yesterday   [Anthology 1]", "Yesterday   [Help]"}));
    EXPECT_EQ(assembly::readChildNodes(database, "TempSource", "O'Neil"),
              QStringList({"Don't Stop   [Fits [Live]]"}));
    EXPECT_TRUE(assembly::readChildNodes(database, "TempSource", "Nobody, Else").isEmpty());
}

// Only a performer without sort form is incomplete data; a track without title or album is a
// node with empty text, and clicking it finds the track.
TEST_F(PerformerTreeTest, MissingTitleOrAlbumShowsAsEmptyText) {
    testsupport::execOnConnection(database,
                                  "INSERT INTO TempSource VALUES ('Abba', 'Abba', 'Zzz', NULL, "
                                  "1), ('Abba', 'Abba', NULL, 'Arrival', 2)");
    const QStringList abba = assembly::readChildNodes(database, "TempSource", "Abba");
    EXPECT_EQ(abba, QStringList({"   [Arrival]", "Waterloo   [Waterloo]", "Zzz   []"}));
    EXPECT_EQ(foundTitle(assembly::nodeCriteria(2, abba[0], "Abba")), " / Arrival");
    EXPECT_EQ(foundTitle(assembly::nodeCriteria(2, abba[2], "Abba")), "Zzz / ");
    EXPECT_EQ(assembly::kIncompleteData,
              "Uncomplete data. Make sure that the 'Artist sort by' field \r\nin your Albumory "
              "database is NOT empty.");
}

TEST_F(PerformerTreeTest, ChildNodeTextHasThreeBlanksBeforeTheAlbum) {
    EXPECT_EQ(assembly::childNodeText("Yesterday", "Help"), "Yesterday   [Help]");
    EXPECT_EQ(assembly::childNodeText("", ""), "   []");
}

TEST_F(PerformerTreeTest, CriteriaDoubleApostrophesAndSplitTheNode) {
    EXPECT_EQ(assembly::nodeCriteria(1, "O'Neil", "ignored"), "artistsort='O''Neil'");
    EXPECT_EQ(assembly::nodeCriteria(2, "Yesterday   [Help]", "Beatles, The"),
              "artistsort='Beatles, The' AND titletrack='Yesterday' AND titlealbum='Help'");
    // Brackets in the album: the album ends at the first "]".
    EXPECT_EQ(assembly::nodeCriteria(2, "Don't Stop   [Fits [Live]]", "O'Neil"),
              "artistsort='O''Neil' AND titletrack='Don''t Stop' AND titlealbum='Fits [Live'");
    // A bracket in the title: the album starts after the first "[".
    EXPECT_EQ(assembly::nodeCriteria(2, "Song [Live]   [Album]", "P"),
              "artistsort='P' AND titletrack='Song [Live]' AND titlealbum='Live'");
}

TEST_F(PerformerTreeTest, CriteriaFindTheNodesRowInTheSource) {
    EXPECT_EQ(foundTitle(assembly::nodeCriteria(2, "Yesterday   [Anthology 1]", "Beatles, The")),
              "Yesterday / Anthology 1");
    EXPECT_EQ(foundTitle(assembly::nodeCriteria(2, "Yesterday   [Help]", "Beatles, The")),
              "Yesterday / Help");
    EXPECT_EQ(foundTitle(assembly::nodeCriteria(1, "O'Neil", "")), "Don't Stop / Fits [Live]");
    EXPECT_EQ(foundTitle(assembly::nodeCriteria(2, "Waterloo   [Waterloo]", "Beatles, The")),
              "no match");
}

TEST_F(PerformerTreeTest, FilteredSourceListsOnlyItsPerformers) {
    QString clause;
    qint64 passed = 0;
    const query::FilterOutcome outcome =
        query::applyFilter(database, {query::FilterRow{"Time", ">=", "000500"}, query::FilterRow{}},
                           "", clause, passed);
    ASSERT_FALSE(outcome.failed()) << outcome.message.toStdString();
    EXPECT_EQ(passed, 1);
    const QString source = query::sourceRecordSource(clause, "");
    EXPECT_EQ(assembly::readRootNodes(database, source).texts, QStringList({"O'Neil"}));
    EXPECT_TRUE(assembly::readChildNodes(database, source, "Abba").isEmpty());
    EXPECT_EQ(assembly::readChildNodes(database, source, "O'Neil"),
              QStringList({"Don't Stop   [Fits [Live]]"}));
}

TEST_F(PerformerTreeTest, BadRecordSourceIsAnEngineError) {
    EXPECT_THROW(assembly::readRootNodes(database, "SELECT * FROM NoSuchTable"), engine::JetError);
}

}  // namespace
