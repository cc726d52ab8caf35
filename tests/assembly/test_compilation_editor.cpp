#include <gtest/gtest.h>

#include "assembly/compilation_editor.h"
#include "engine/workspace.h"
#include "platform/scripted_dialogs.h"
#include "support/databases.h"
#include "support/sqlite_rows.h"
#include "support/temp_dir.h"

using assembly::CompilationEditor;
using assembly::EditorMode;
using assembly::UpdateResult;

namespace {

class Editor : public ::testing::Test {
  protected:
    void SetUp() override {
        path = dir.file("c.mdb");
        testsupport::createCompilationDatabase(path);
        testsupport::execRaw(path, R"sql(
            INSERT INTO Compilation (CompilationID_P, Name, SumTrack, SumTime, Manufacturer,
                                     Format, C_Length, Box, CoverMemo, RecDate, Notes)
            VALUES (3, 'Stored', 2, 400, 'Sony', 'CD-ROM', 80, 'B1', '{\rtf1 x}', '1997-01-21',
                    NULL),
                   (4, 'Bare', 0, 0, NULL, 'MD', 74, NULL, NULL, NULL, NULL);
        )sql");
        database = engine::Workspace::defaultWorkspace().openDatabase(path);
    }
    void TearDown() override { engine::Workspace::defaultWorkspace().close(); }

    QList<QVariantList> rows(const QString& sql) { return sqliteRows(path, sql); }
    QString count() { return testsupport::queryRaw(path, "SELECT Count(*) FROM Compilation"); }
    void fill(CompilationEditor& editor, const QString& name) {
        editor.values.name = name;
        editor.values.format = "MD";
        editor.values.length = "74";
    }

    testsupport::TempDir dir;
    QString path;
    engine::Database database;
    platform::ScriptedDialogs dialogs;
};

TEST_F(Editor, EditShowsTheStoredValuesAndNullsLeaveControlsAlone) {
    CompilationEditor editor(database);
    editor.values.notes = "kept";
    editor.loadEditor(EditorMode::Edit, 3);
    EXPECT_EQ(editor.values.name, "Stored");
    EXPECT_EQ(editor.values.notes, "kept");
    EXPECT_EQ(editor.values.storage, "B1");
    EXPECT_EQ(editor.values.format, "CD-ROM");
    EXPECT_EQ(editor.values.length, "80");
    EXPECT_EQ(editor.values.manufacturer, "Sony");
    EXPECT_EQ(editor.values.dateText, "21.01.97");
    EXPECT_EQ(editor.values.cover, "{\\rtf1 x}");
    EXPECT_TRUE(editor.isSaved());
    EXPECT_FALSE(editor.isNew());
    EXPECT_FALSE(editor.getTracksEnabled());
    EXPECT_EQ(editor.storedContent(), assembly::StoredContent::Tracks);

    CompilationEditor bare(database);
    bare.loadEditor(EditorMode::Edit, 4);
    EXPECT_EQ(bare.values.dateText, "__.__.__");
    EXPECT_EQ(bare.storedContent(), assembly::StoredContent::NoTracks);
}

TEST_F(Editor, AddStartsEmptyWithTodayAndStoresNothingBeforeUpdate) {
    CompilationEditor editor(database);
    editor.values.name = "left over";
    editor.loadEditor(EditorMode::Add, 3, QDate(2024, 3, 5));
    EXPECT_EQ(editor.values.name, "");
    EXPECT_EQ(editor.values.dateText, "05.03.24");
    EXPECT_TRUE(editor.isNew());
    EXPECT_FALSE(editor.isSaved());
    EXPECT_EQ(editor.storedContent(), assembly::StoredContent::NoRow);
    EXPECT_EQ(count(), "2");
}

TEST_F(Editor, ChecksComeInTheirOrderAndAFailureStoresNothing) {
    CompilationEditor editor(database);
    editor.loadEditor(EditorMode::Add, std::nullopt);
    const auto update = [&] { return editor.updateCompilation(dialogs).result; };
    EXPECT_EQ(update(), UpdateResult::NameRequired);
    editor.values.name = "Bare";
    EXPECT_EQ(update(), UpdateResult::FormatRequired);
    editor.values.format = "MD";
    EXPECT_EQ(update(), UpdateResult::LengthRequired);
    editor.values.length = "74";
    EXPECT_EQ(update(), UpdateResult::DuplicateName);
    ASSERT_EQ(dialogs.messages().size(), 4u);
    EXPECT_EQ(dialogs.messages()[0].text, "Field 'Name': a value is requiered.");
    EXPECT_EQ(dialogs.messages()[1].text, "Field 'Format': a value is requiered.");
    EXPECT_EQ(dialogs.messages()[2].text, "Field 'Length': a value is requiered.");
    EXPECT_EQ(dialogs.messages()[3].text, QString("Field 'Name': value is already present.") +
                                              QChar(13) + "Choose another name.");
    EXPECT_EQ(dialogs.messages()[3].icon, platform::MessageIcon::Exclamation);
    EXPECT_EQ(count(), "2");
    EXPECT_TRUE(editor.isNew());
    EXPECT_FALSE(editor.isSaved());

    editor.values.length = "seventy";
    editor.values.name = "New";
    EXPECT_EQ(update(), UpdateResult::LengthNotANumber);
    editor.values.length = "74";
    editor.values.dateText = "31.02.97";
    EXPECT_EQ(update(), UpdateResult::DateNotADate);
    EXPECT_EQ(dialogs.lastMessageText(), "Value must be a valid date (e.g. 21.01.97).");
    EXPECT_EQ(count(), "2");
}

TEST_F(Editor, UpdateWritesTheLongestTextsNullsAndTheEmptyCover) {
    CompilationEditor editor(database);
    editor.loadEditor(EditorMode::Add, std::nullopt);
    fill(editor, QString(80, 'n'));
    editor.values.storage = QString(50, 's');
    editor.values.dateText = "__.__.__";
    editor.connection().albumConnected = true;
    ASSERT_TRUE(editor.updateCompilation(dialogs).saved());
    EXPECT_TRUE(editor.isSaved());
    EXPECT_TRUE(editor.getTracksEnabled());
    EXPECT_FALSE(editor.isNew());
    const qint64 id = editor.compilationId().value_or(0);
    const QList<QVariantList> stored =
        rows(QString("SELECT Name, Box, Notes, Manufacturer, RecDate, CoverMemo, C_Length, "
                     "typeof(CoverMemo) FROM Compilation WHERE CompilationID_P = %1")
                 .arg(id));
    ASSERT_EQ(stored.size(), 1);
    EXPECT_EQ(stored[0][0].toString(), QString(80, 'n'));
    EXPECT_EQ(stored[0][1].toString(), QString(50, 's'));
    EXPECT_FALSE(stored[0][2].isValid());
    EXPECT_FALSE(stored[0][3].isValid());
    EXPECT_FALSE(stored[0][4].isValid());
    EXPECT_EQ(stored[0][5].toString(), "");
    EXPECT_EQ(stored[0][6].toLongLong(), 74);
    EXPECT_EQ(stored[0][7].toString(), "text");
}

// Values set past the editor's boxes (the command line): the longest are stored, one more is
// refused with its message and stores nothing.
TEST_F(Editor, TheLongestValuesAreStoredAndOneMoreIsRefused) {
    const struct {
        int nameLength;
        int storageLength;
        QString length;
        UpdateResult result;
    } cases[] = {
        {80, 50, "1", UpdateResult::Saved},
        {81, 0, "74", UpdateResult::NameTooLong},
        {20, 51, "74", UpdateResult::StorageTooLong},
        {21, 0, "0", UpdateResult::LengthNotMinutes},
        {22, 0, "1.5", UpdateResult::LengthNotMinutes},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(QString("name %1, storage %2, length %3")
                         .arg(c.nameLength)
                         .arg(c.storageLength)
                         .arg(c.length)
                         .toStdString());
        CompilationEditor editor(database);
        editor.loadEditor(EditorMode::Add, std::nullopt);
        fill(editor, QString(c.nameLength, 'n'));
        editor.values.storage = QString(c.storageLength, 's');
        editor.values.length = c.length;
        const QString before = count();
        EXPECT_EQ(editor.updateCompilation(dialogs).result, c.result);
        if (c.result == UpdateResult::Saved) {
            EXPECT_EQ(count().toInt(), before.toInt() + 1);
        } else {
            EXPECT_EQ(count(), before);
            EXPECT_EQ(dialogs.lastMessageText(), assembly::updateFailureMessage(c.result));
        }
    }
}

TEST_F(Editor, ASecondUpdateEditsTheSameRow) {
    CompilationEditor editor(database);
    editor.loadEditor(EditorMode::Add, std::nullopt);
    fill(editor, "First");
    editor.values.dateText = "21.01.97";
    ASSERT_TRUE(editor.updateCompilation(dialogs).saved());
    editor.fieldEdited();
    EXPECT_FALSE(editor.isSaved());
    editor.values.name = "Renamed";
    editor.values.manufacturer = "TDK";
    ASSERT_TRUE(editor.updateCompilation(dialogs).saved());
    EXPECT_EQ(count(), "3");
    EXPECT_EQ(rows("SELECT Name, Manufacturer, RecDate FROM Compilation WHERE CompilationID_P > 4"),
              (QList<QVariantList>{{"Renamed", "TDK", "1997-01-21"}}));
}

TEST_F(Editor, EditingKeepsTheSumsAndAFailedEditChangesNothing) {
    CompilationEditor editor(database);
    editor.loadEditor(EditorMode::Edit, 3);
    editor.values.notes = "more";
    ASSERT_TRUE(editor.updateCompilation(dialogs).saved());
    EXPECT_EQ(rows("SELECT Notes, SumTrack, SumTime FROM Compilation WHERE CompilationID_P = 3"),
              (QList<QVariantList>{{"more", 2, 400}}));
    editor.values.name = "BARE";
    editor.values.notes = "lost";
    EXPECT_EQ(editor.updateCompilation(dialogs).result, UpdateResult::DuplicateName);
    EXPECT_EQ(testsupport::queryRaw(path, "SELECT Notes FROM Compilation WHERE Name = 'Stored'"),
              "more");
}

TEST_F(Editor, CoverControlsFollowTracksFormatAndText) {
    const auto noTracks =
        assembly::coverControls(assembly::StoredContent::NoTracks, "MD", false, false);
    EXPECT_FALSE(noTracks.getEnabled[0] || noTracks.getEnabled[1] || noTracks.getEnabled[2]);
    EXPECT_FALSE(noTracks.sortEnabled);
    EXPECT_TRUE(noTracks.fontEnabled && noTracks.copyEnabled);

    const auto cdRom =
        assembly::coverControls(assembly::StoredContent::Tracks, "Cd-Rom", false, false);
    EXPECT_FALSE(cdRom.getEnabled[0] || cdRom.getEnabled[1] || cdRom.sortEnabled);
    EXPECT_TRUE(cdRom.getEnabled[2]);

    const auto md = assembly::coverControls(assembly::StoredContent::Tracks, "MD", true, false);
    EXPECT_TRUE(md.getEnabled[0] && md.getEnabled[1] && md.getEnabled[2] && md.sortEnabled);
    EXPECT_TRUE(md.chooseTimeOrder);
    EXPECT_TRUE(md.resetCover);
    EXPECT_FALSE(md.fontEnabled || md.copyEnabled);
    EXPECT_FALSE(assembly::coverControls(assembly::StoredContent::Tracks, "MD", false, true)
                     .chooseTimeOrder);
}

TEST_F(Editor, ValueListsAndANewManufacturer) {
    EXPECT_EQ(assembly::valueList(database, assembly::ValueList::Length).first(), "46");
    EXPECT_TRUE(assembly::valueList(database, assembly::ValueList::Format).contains("CD-ROM"));
    EXPECT_TRUE(assembly::isListedManufacturer(database, "sony"));
    EXPECT_FALSE(assembly::isListedManufacturer(database, "O'Brand"));

    dialogs.answerMessage(platform::MessageAnswer::No);
    EXPECT_FALSE(assembly::offerManufacturer(database, dialogs, "O'Brand"));
    EXPECT_EQ(dialogs.lastMessageText(),
              "Add 'O'Brand' to the list of available manufacturer/brand names?");
    EXPECT_FALSE(assembly::isListedManufacturer(database, "O'Brand"));
    dialogs.answerMessage(platform::MessageAnswer::Yes);
    EXPECT_TRUE(assembly::offerManufacturer(database, dialogs, "O'Brand"));
    EXPECT_TRUE(
        assembly::valueList(database, assembly::ValueList::Manufacturer).contains("O'Brand"));
    EXPECT_EQ(assembly::compilationIdByName(database, "stored"), 3);
    EXPECT_EQ(assembly::compilationIdByName(database, "none"), std::nullopt);
}

}  // namespace
