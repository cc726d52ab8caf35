#include "assembly/performer_tree.h"

#include "engine/jet_error.h"
#include "picker_fixture.h"
#include "query/filter_clause.h"

namespace {

// A TempSource of a few performers; "Ghost" has no sort form, "Nobody" an empty one. Performers
// without sort form are left out; a track without title or album is a node with empty text.
// The album of a node's text starts after its first "[" and ends at the first "]". Any source
// but the plain TempSource is read through queryNavigate, dropped again by the plain source.
TEST_F(PickerTest, PerformerTreeLevelsListDistinctNodesWhoseCriteriaFindTheirRows) {
    testsupport::execOnConnection(open(), R"sql(
        CREATE TEMP TABLE TempSource (ArtistSort TEXT COLLATE MIXORAMA_TEXT,
            TitleTrack TEXT COLLATE MIXORAMA_TEXT, TitleAlbum TEXT COLLATE MIXORAMA_TEXT, Length);
        INSERT INTO TempSource VALUES ('Beatles, The', 'Yesterday', 'Help', 125),
            ('Beatles, The', 'Help!', 'Help', 140), ('Beatles, The', 'Yesterday', 'Anthology', 160),
            ('Beatles, The', 'Yesterday', 'Help', 125), ('Abba', 'Zzz', NULL, 1),
            ('Abba', NULL, 'Arrival', 2), ('O''Neil', 'Don''t Stop', 'Fits [Live]', 583),
            (NULL, 'Boo', 'Haunted', 100), ('', 'Silence', 'Quiet', 90);)sql");
    EXPECT_EQ(assembly::readRootNodes(database, "TempSource").texts,
              QStringList({"Abba", "Beatles, The", "O'Neil"}));
    EXPECT_EQ(assembly::readChildNodes(database, "TempSource", "Beatles, The"),
              QStringList({"Help!   [Help]", "Yesterday   [Anthology]", "Yesterday   [Help]"}));
    const QStringList abba = assembly::readChildNodes(database, "TempSource", "Abba");
    EXPECT_EQ(abba, QStringList({"   [Arrival]", "Zzz   []"}));
    const std::pair<QString, QString> cases[] = {
        {assembly::nodeCriteria(1, "O'Neil", ""), "Don't Stop / Fits [Live]"},
        {assembly::nodeCriteria(2, "Yesterday   [Anthology]", "Beatles, The"),
         "Yesterday / Anthology"},
        {assembly::nodeCriteria(2, abba[0], "Abba"), " / Arrival"},
        {assembly::nodeCriteria(2, abba[1], "Abba"), "Zzz / "},
        {assembly::nodeCriteria(2, abba[1], "Beatles, The"), ""},
        {assembly::nodeCriteria(2, "Don't Stop   [Fits [Live]]", "O'Neil"), ""},
    };
    for (const auto& [criterion, row] : cases) {
        engine::Recordset rows = database.openRecordset("TempSource");
        rows.findFirst(criterion);
        EXPECT_EQ(rows.noMatch() ? "" : rows.value(1).toString() + " / " + rows.value(2).toString(),
                  row)
            << criterion.toStdString();
    }
    QString clause;
    qint64 passed = 0;
    query::applyFilter(database, {query::FilterRow{"Time", ">=", "000500"}, query::FilterRow{}}, "",
                       clause, passed);
    const QString filtered = query::sourceRecordSource(clause, "");
    EXPECT_EQ(assembly::readRootNodes(database, filtered).texts, QStringList({"O'Neil"}));
    EXPECT_TRUE(database.queryDefNames().contains(assembly::kNavigateQuery, Qt::CaseInsensitive));
    EXPECT_TRUE(assembly::readChildNodes(database, filtered, "Abba").isEmpty());
    assembly::readRootNodes(database, "TempSource");
    EXPECT_FALSE(database.queryDefNames().contains(assembly::kNavigateQuery, Qt::CaseInsensitive));
    EXPECT_THROW(assembly::readRootNodes(database, "SELECT * FROM NoSuchTable"), engine::JetError);
}

}  // namespace
