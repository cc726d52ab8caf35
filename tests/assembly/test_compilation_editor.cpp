#include "assembly/compilation_editor.h"
#include "picker_fixture.h"
#include "platform/scripted_dialogs.h"
#include "support/sqlite_rows.h"

using assembly::CompilationEditor;
using assembly::EditorMode;
using assembly::StoredContent;
using assembly::UpdateResult;

namespace {

// Beside the picker's three: 4 "Stored" (CD-ROM, two tracks stored, every value but notes).
class Editor : public PickerTest {
  protected:
    void SetUp() override {
        PickerTest::SetUp();
        testsupport::execRaw(path,
                             "INSERT INTO Compilation (Name, SumTrack, SumTime, Manufacturer, "
                             "Format, C_Length, Box, CoverMemo, RecDate) VALUES ('Stored', 2, "
                             "360, 'Sony', 'CD-ROM', 80, 'B1', '{\\rtf1 x}', '1997-01-21')");
        editor = CompilationEditor(open());
    }
    int count() { return testsupport::queryRaw(path, "SELECT Count(*) FROM Compilation").toInt(); }
    // Name, Box, Notes, RecDate, CoverMemo and its type, SumTrack, SumTime.
    QVariantList row(qint64 id) {
        return sqliteRows(path, QString("SELECT Name, Box, Notes, RecDate, CoverMemo, "
                                        "typeof(CoverMemo), SumTrack, SumTime FROM Compilation "
                                        "WHERE CompilationID_P = %1")
                                    .arg(id))
            .value(0);
    }
    CompilationEditor editor{engine::Database()};
    platform::ScriptedDialogs dialogs;
};

// The checks in their order; each refusal shows its message and stores nothing. Values set
// past the editor's boxes (the command line): the longest are stored, one more is refused.
TEST_F(Editor, UpdateChecksEachValueAtItsLimit) {
    const QString none = assembly::kEmptyDateMask;
    const struct {
        QString name, format, length;
        int storageLength;
        QString date;
        UpdateResult result;
    } cases[] = {
        {"", "MD", "74", 0, none, UpdateResult::NameRequired},
        {"N", "", "74", 0, none, UpdateResult::FormatRequired},
        {"N", "MD", "", 0, none, UpdateResult::LengthRequired},
        {"road trip", "MD", "74", 0, none, UpdateResult::DuplicateName},
        {QString(81, 'n'), "MD", "74", 0, none, UpdateResult::NameTooLong},
        {"N", "MD", "74", 51, none, UpdateResult::StorageTooLong},
        {"N", "MD", "0", 0, none, UpdateResult::LengthNotMinutes},
        {"N", "MD", "1.5", 0, none, UpdateResult::LengthNotMinutes},
        {"N", "MD", "seventy", 0, none, UpdateResult::LengthNotANumber},
        {"N", "MD", "74", 0, "31.02.97", UpdateResult::DateNotADate},
        {QString(80, 'n'), "MD", "1", 50, none, UpdateResult::Saved},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(static_cast<int>(c.result));
        editor.loadEditor(EditorMode::Add, std::nullopt);
        editor.values = {c.name, "", QString(c.storageLength, 's'), c.format, c.length, "",
                         c.date, ""};
        const int before = count();
        const size_t messages = dialogs.messages().size();
        EXPECT_EQ(editor.updateCompilation(dialogs).result, c.result);
        const bool saved = c.result == UpdateResult::Saved;
        EXPECT_EQ(count(), before + (saved ? 1 : 0));
        EXPECT_EQ(editor.isSaved(), saved);
        EXPECT_EQ(dialogs.messages().size(), messages + (saved ? 0 : 1));
        if (!assembly::updateFailureMessage(c.result).isEmpty()) {
            EXPECT_EQ(dialogs.lastMessageText(), assembly::updateFailureMessage(c.result));
        }
    }
}

// A new row starts on today's date; empty texts are stored as Null, the empty cover as the empty
// text; a second Update edits the same row; Edit shows the stored values (a Null leaves its
// control alone); an edit keeps the sums, and a failed edit changes nothing.
TEST_F(Editor, UpdatesWriteOneRowAndLeaveTheSumsAlone) {
    editor.loadEditor(EditorMode::Edit, 1);
    EXPECT_EQ(editor.storedContent(), StoredContent::NoTracks);
    editor.loadEditor(EditorMode::Add, 1, QDate(2024, 3, 5));
    EXPECT_EQ(editor.values.dateText, "05.03.24");
    EXPECT_TRUE(editor.isNew() && !editor.isSaved());
    EXPECT_EQ(editor.storedContent(), StoredContent::NoRow);
    editor.values = {"First", "", "", "MD", "74", "", assembly::kEmptyDateMask, ""};
    editor.connection().albumConnected = true;
    ASSERT_TRUE(editor.updateCompilation(dialogs).saved());
    EXPECT_TRUE(editor.getTracksEnabled() && !editor.isNew());
    const qint64 id = editor.compilationId().value_or(0);
    EXPECT_EQ(row(id).mid(0, 6), (QVariantList{"First", {}, {}, {}, "", "text"}));
    EXPECT_FALSE(editor.hasUnstoredEdits());
    editor.fieldEdited();
    EXPECT_FALSE(editor.isSaved() || editor.getTracksEnabled());
    EXPECT_TRUE(editor.hasUnstoredEdits());
    editor.values.name = "Renamed";
    editor.values.dateText = "21.01.97";
    ASSERT_TRUE(editor.updateCompilation(dialogs).saved());
    EXPECT_FALSE(editor.hasUnstoredEdits());
    EXPECT_EQ(row(id).mid(0, 4), (QVariantList{"Renamed", {}, {}, "1997-01-21"}));
    editor.values.notes = "kept";
    editor.loadEditor(EditorMode::Edit, 4);
    const assembly::EditorValues& shown = editor.values;
    EXPECT_EQ(
        QStringList({shown.name, shown.notes, shown.storage, shown.format, shown.length,
                     shown.manufacturer, shown.dateText, shown.cover}),
        QStringList({"Stored", "kept", "B1", "CD-ROM", "80", "Sony", "21.01.97", "{\\rtf1 x}"}));
    EXPECT_TRUE(editor.isSaved() && !editor.isNew() && !editor.getTracksEnabled());
    EXPECT_EQ(editor.storedContent(), StoredContent::Tracks);
    editor.values.notes = "more";
    ASSERT_TRUE(editor.updateCompilation(dialogs).saved());
    EXPECT_EQ(row(4).mid(2), (QVariantList{"more", "1997-01-21", "{\\rtf1 x}", "text", 2, 360}));
    editor.values.name = "RENAMED";
    editor.values.notes = "lost";
    EXPECT_EQ(editor.updateCompilation(dialogs).result, UpdateResult::DuplicateName);
    EXPECT_EQ(row(4).value(2), "more");
    EXPECT_EQ(count(), 5);
}

// The controls p, pa, ps, sort, time order, font, copy, reset: 1 usable, chosen or reset.
TEST(CoverControls, FollowTracksFormatAndText) {
    const auto shown = [](StoredContent stored, const QString& format, bool empty, bool byAlbum) {
        const assembly::CoverControls c = assembly::coverControls(stored, format, empty, byAlbum);
        QString flags;
        for (bool flag : {c.getEnabled[0], c.getEnabled[1], c.getEnabled[2], c.sortEnabled,
                          c.chooseTimeOrder, c.fontEnabled, c.copyEnabled, c.resetCover}) {
            flags += flag ? '1' : '0';
        }
        return flags;
    };
    EXPECT_EQ(shown(StoredContent::NoTracks, "MD", false, false), "00000110");
    EXPECT_EQ(shown(StoredContent::Tracks, "Cd-Rom", false, false), "00100110");
    EXPECT_EQ(shown(StoredContent::Tracks, "MD", true, false), "11111001");
    EXPECT_EQ(shown(StoredContent::Tracks, "MD", false, true), "11110110");
}

}  // namespace
