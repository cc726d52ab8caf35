// The compilation editor driven through its controls from the main window.

#include "assembly/compilation_editor.h"
#include "assembly/cover_composer.h"
#include "support/document_summary.h"
#include "ui/controls/cover_text_box.h"
#include "ui/windows/edit_compilation_window.h"
#include "window_fixture.h"

namespace {

// "Disc" (CD-ROM) and "Mix" (MD, Sony, Box 7, recorded 21.01.97) hold Adams "Morning" and
// Baker "Night"; "Taken" has no tracks.
class EditorWindow : public WindowTest {
  protected:
    void SetUp() override {
        WindowTest::SetUp();
        const QList<testsupport::SampleTrack> tracks{
            {.performer = "Adams", .title = "Morning", .seconds = 165, .performerSort = "Adams"},
            {.performer = "Baker", .title = "Night", .seconds = 391, .performerSort = "Baker"}};
        path = makeDatabase("c.mdb", {{.name = "Disc", .format = "CD-ROM", .tracks = tracks},
                                      {.name = "Mix",
                                       .manufacturer = "Sony",
                                       .box = "Box 7",
                                       .recDate = "1997-01-21 00:00:00",
                                       .tracks = tracks},
                                      {.name = "Taken", .minutes = 60}});
        openThroughToolbar(path);
        window->show();
    }
    // Opens the editor through the toolbar on the list's row.
    void open(const QString& tool, int row = 0) {
        window->compilations()->recordset().setAbsolutePosition(row);
        window->compilations()->notifyCurrentChanged();
        clickTool(tool);
        editor = window->findChild<ui::EditCompilationWindow*>();
        ASSERT_NE(editor, nullptr);
    }
    template <typename T = QWidget>
    T* field(const QString& name) const {
        return testsupport::control<T>(editor, name);
    }
    void type(const QString& name, const QString& value) {
        field<QLineEdit>(name)->clear();
        QTest::keyClicks(field<QLineEdit>(name), value);
    }
    void choose(const QString& name, const QString& entry) {
        auto* list = field<QComboBox>(name);
        list->setCurrentIndex(list->findText(entry));
        emit list->activated(list->currentIndex());
    }
    QString stored(const QString& sql) { return testsupport::queryRaw(path, sql); }

    QString path;
    QPointer<ui::EditCompilationWindow> editor;
};

TEST_F(EditorWindow, AddRefusesWhatTheLogicRefusesThenStoresOneRowTheListShows) {
    open("ID_NewCompilation");
    EXPECT_FALSE(window->isVisible()) << "the opener hides while the editor is open";
    EXPECT_FALSE(field("BtnGetSongs")->isEnabled());
    type("txtCompilationName", "taken");
    choose("tdbCmbFmt", "CD-R");
    choose("tdbCmbLen", "80");
    clickButton(editor, "btnUpdate");
    EXPECT_EQ(dialogs.lastMessageText(),
              assembly::updateFailureMessage(assembly::UpdateResult::DuplicateName));
    EXPECT_EQ(stored("SELECT Count(*) FROM Compilation"), "3");

    type("txtCompilationName", "Fresh");
    clickButton(editor, "btnUpdate");
    EXPECT_EQ(stored("SELECT Format || C_Length FROM Compilation WHERE Name = 'Fresh'"), "CD-R80");
    EXPECT_EQ(window->grid()->model()->rowCount(), 4) << "the list follows while it is hidden";

    // Escape and Ctrl+W close as the close button does: an edit not stored is not lost unasked.
    type("txtCompilationName", "Fresher");
    testsupport::pressInWindow(editor, Qt::Key_Escape);
    EXPECT_EQ(dialogs.lastMessageText(), assembly::kDiscardEditsQuestion);
    EXPECT_TRUE(editor->isVisible()) << "No, the default, keeps the editor open";
    dialogs.answerMessage(platform::MessageAnswer::Yes);
    testsupport::pressInWindow(editor, Qt::Key_W, Qt::ControlModifier);
    EXPECT_TRUE(editor.isNull() || !editor->isVisible());
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(currentName(), "Fresh") << "the new compilation is the list's current row";
}

TEST_F(EditorWindow, EditShowsTheCurrentRowAndARenameFollowsInTheList) {
    open("ID_EditCompilation", 1);
    EXPECT_EQ(field<QLineEdit>("txtCompilationName")->text(), "Mix");
    EXPECT_EQ(field<QComboBox>("tdbCmbMan")->currentText(), "Sony");
    EXPECT_EQ(field<QLineEdit>("TDBDateRecording")->text(), "21.01.97");
    type("txtCompilationName", "Mix Two");
    clickButton(editor, "btnUpdate");
    EXPECT_TRUE(dialogs.messages().empty());
    EXPECT_EQ(window->grid()->model()->index(1, 0).data().toString(), "Mix Two");

    clickTool("ID_CloseFile");  // closes the editor without storing
    EXPECT_TRUE(editor.isNull());
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(stored("SELECT Count(*) FROM Compilation WHERE Name = 'Mix Two'"), "1");
}

TEST_F(EditorWindow, TheCoverButtonsStoreWhatTheComposerComposes) {
    open("ID_EditCompilation", 1);
    EXPECT_FALSE(field("btnCopy2Clip")->isEnabled()) << "no cover text yet";
    clickButton(editor, "btnGet2");
    const assembly::CoverMode mode = assembly::CoverMode::PerformerSong;
    const assembly::ComposedCover composed = assembly::composeCoverText(
        mode, assembly::readCoverRows(window->state().database, mode, 2), "MD", false);
    EXPECT_EQ(stored("SELECT CoverMemo FROM Compilation WHERE Name = 'Mix'"), composed.text);
    EXPECT_EQ(testsupport::boldRanges(*field<ui::CoverTextBox>("rtfCover")->document()).size(),
              qsizetype(composed.bold.size()));
    EXPECT_TRUE(field("btnCopy2Clip")->isEnabled());
    testsupport::pressInWindow(field("rtfCover"), Qt::Key_Tab, Qt::ControlModifier);  // not a tab
    EXPECT_NE(QApplication::focusWidget(), field("rtfCover"));

    // Another format disables the cover buttons until the next Update.
    choose("tdbCmbFmt", "CD-ROM");
    EXPECT_FALSE(field("btnGet2")->isEnabled());
    clickButton(editor, "btnUpdate");
    const assembly::CoverControls cdRom =
        assembly::coverControls(assembly::StoredContent::Tracks, "CD-ROM", false, false);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(field(QStringLiteral("btnGet%1").arg(i))->isEnabled(), cdRom.getEnabled[i]);
    }
    clickButton(editor, "btnGet2");  // stored as it is composed: Escape closes unasked
    testsupport::pressInWindow(editor, Qt::Key_Escape);
    EXPECT_TRUE(dialogs.messages().empty() && (editor.isNull() || !editor->isVisible()));
}

}  // namespace
