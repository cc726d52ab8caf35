// The compilation editor driven through its controls from the main window.
#include <QClipboard>
#include <QLineEdit>
#include <QMimeData>
#include <QPointer>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTest>
#include <QTextDocument>

#include "access/access_reader.h"
#include "albumgen/albumgen.h"
#include "overview_fixture.h"
#include "rtf/rtf.h"
#include "support/databases.h"
#include "support/document_summary.h"
#include "ui/controls/cover_text_box.h"
#include "ui/controls/data_grid.h"
#include "ui/windows/edit_compilation_window.h"
#include "ui/windows/get_songs_window.h"

using testsupport::boldRanges;

namespace {

// Two compilations; "Mix" (MD) and "Disc" (CD-ROM) hold Adams, Morning, 165 s and Baker,
// Night Train, 391 s, both from the album Gold.
const char* kCompilations = R"sql(
    INSERT INTO Compilation (CompilationID_P, Name, SumTrack, SumTime, Format, C_Length, Box,
                             RecDate, Manufacturer)
    VALUES (1, 'Disc', 2, 556, 'CD-ROM', 74, NULL, NULL, NULL),
           (2, 'Mix', 2, 556, 'MD', 74, 'Box 7', '1997-01-21', 'Sony'),
           (3, 'Taken', 0, 0, 'MD', 60, NULL, NULL, NULL);
    INSERT INTO CompilationTrack (CompilationID_F1, TrackNo, Track_Artist_Name, ArtistSort,
                                  Track_Title, Album_Title, Length)
    VALUES (1, 1, 'Adams', 'Adams', 'Morning', 'Gold', 165),
           (1, 2, 'Baker', 'Baker', 'Night Train', 'Gold', 391),
           (2, 1, 'Adams', 'Adams', 'Morning', 'Gold', 165),
           (2, 2, 'Baker', 'Baker', 'Night Train', 'Gold', 391);
)sql";

class EditorWindow : public OverviewFixture {
  protected:
    void SetUp() override {
        OverviewFixture::SetUp();
        path = makeDatabase("c.mdb");
        testsupport::execRaw(path, kCompilations);
        openThroughToolbar(path);
        window->show();
    }

    // Opens the editor through the toolbar on the list's row (0-based) for "EDIT".
    ui::EditCompilationWindow* open(const QString& tool, int row = 0) {
        window->compilations()->recordset().setAbsolutePosition(row);
        window->compilations()->notifyCurrentChanged();
        window->toolBar()->clickTool(tool);
        editor = window->findChild<ui::EditCompilationWindow*>();
        EXPECT_NE(editor, nullptr);
        return editor;
    }
    template <typename T>
    T* field(const QString& name) const {
        T* found = editor->findChild<T*>(name);
        EXPECT_NE(found, nullptr) << name.toStdString();
        return found;
    }
    QLineEdit* text(const QString& name) const { return field<QLineEdit>(name); }
    QComboBox* combo(const QString& name) const { return field<QComboBox>(name); }
    QPushButton* editorButton(const QString& name) const { return field<QPushButton>(name); }
    ui::CoverTextBox* cover() const { return field<ui::CoverTextBox>("rtfCover"); }
    void type(const QString& name, const QString& value) {
        text(name)->clear();
        QTest::keyClicks(text(name), value);
    }
    void choose(const QString& name, const QString& entry) {
        QComboBox* list = combo(name);
        list->setCurrentIndex(list->findText(entry));
        emit list->activated(list->currentIndex());
    }
    QString stored(const QString& sql) { return testsupport::queryRaw(path, sql); }
    QString lastMessage() const { return dialogs.lastMessageText(); }

    QString path;
    QPointer<ui::EditCompilationWindow> editor;
};

TEST_F(EditorWindow, AddChecksItsFieldsInOrderThenStoresOneRow) {
    open("ID_NewCompilation");
    EXPECT_FALSE(window->isVisible()) << "the opener hides while the editor is open";
    EXPECT_TRUE(editor->isVisible());
    EXPECT_EQ(editor->width(), 615);
    EXPECT_EQ(text("txtCompilationName")->text(), "");
    EXPECT_EQ(text("TDBDateRecording")->text(), QDate::currentDate().toString("dd.MM.yy"));
    EXPECT_FALSE(editorButton("BtnGetSongs")->isEnabled());

    const QStringList expected{"Field 'Name': a value is requiered.",
                               "Field 'Format': a value is requiered.",
                               "Field 'Length': a value is requiered.",
                               "Field 'Name': value is already present.\rChoose another name."};
    editorButton("btnUpdate")->click();
    type("txtCompilationName", "taken");
    editorButton("btnUpdate")->click();
    choose("tdbCmbFmt", "CD-R");
    editorButton("btnUpdate")->click();
    choose("tdbCmbLen", "80");
    editorButton("btnUpdate")->click();
    ASSERT_EQ(dialogs.messages().size(), 4u);
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(dialogs.messages()[i].text, expected[i]);
        EXPECT_EQ(dialogs.messages()[i].icon, platform::MessageIcon::Exclamation);
    }
    EXPECT_EQ(stored("SELECT Count(*) FROM Compilation"), "3");

    type("txtCompilationName", "Fresh");
    type("txtNotes", "first");
    editorButton("btnUpdate")->click();
    EXPECT_EQ(dialogs.messages().size(), 4u);
    type("txtNotes", "second");
    editorButton("btnUpdate")->click();
    EXPECT_EQ(stored("SELECT Count(*) FROM Compilation"), "4");
    EXPECT_EQ(stored("SELECT Notes || Format || C_Length FROM Compilation WHERE Name = 'Fresh'"),
              "secondCD-R80");
    EXPECT_EQ(window->grid()->model()->rowCount(), 4) << "the list follows while it is hidden";

    editor->close();
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(currentName(), "Fresh") << "the new compilation is the list's current row";
    EXPECT_EQ(gotoLabel(), "Find Compilation Title:");
    EXPECT_NE(gotoList()->findText("Fresh"), -1);
    EXPECT_EQ(window->statusBarPanels()->panelText(2), "C 4    List 4");
}

TEST_F(EditorWindow, ClosingAnAddBeforeItsUpdateStoresNothing) {
    open("ID_NewCompilation", 1);
    type("txtCompilationName", "Never");
    choose("tdbCmbFmt", "MD");
    editor->close();
    EXPECT_EQ(stored("SELECT Count(*) FROM Compilation"), "3");
    EXPECT_EQ(currentName(), "Mix");
    EXPECT_TRUE(window->isVisible());
}

TEST_F(EditorWindow, EditShowsTheCurrentRowAndARenameFollowsInTheList) {
    open("ID_EditCompilation", 1);
    EXPECT_EQ(text("txtCompilationName")->text(), "Mix");
    EXPECT_EQ(combo("tdbCmbFmt")->currentText(), "MD");
    EXPECT_EQ(combo("tdbCmbLen")->currentText(), "74");
    EXPECT_EQ(combo("tdbCmbMan")->currentText(), "Sony");
    EXPECT_EQ(text("txtStorage")->text(), "Box 7");
    EXPECT_EQ(text("TDBDateRecording")->text(), "21.01.97");
    EXPECT_EQ(text("txtNotes")->text(), "");

    type("txtCompilationName", "Mix Two");
    text("TDBDateRecording")->clear();
    emit text("TDBDateRecording")->textEdited(QString());
    editorButton("btnUpdate")->click();
    EXPECT_TRUE(dialogs.messages().empty());
    EXPECT_EQ(stored("SELECT Count(*) FROM Compilation WHERE RecDate IS NULL"), "3");
    EXPECT_EQ(window->grid()->model()->index(1, 0).data().toString(), "Mix Two");
    editor->close();
    EXPECT_EQ(currentName(), "Mix Two");
    EXPECT_EQ(window->grid()->currentIndex().row(), 1);
}

TEST_F(EditorWindow, GetTracksNeedsAStoredCompilationAndAConnect) {
    accessfile::installAccessReader();
    const QString albums = dir.file("albums.mdb");
    albumgen::writeAlbumDatabase(albums, albumgen::Options{5, 3, true});
    open("ID_NewCompilation");
    QSignalSpy requests(editor.data(), &ui::EditCompilationWindow::getTracksRequested);

    dialogs.answerFile(albums);
    editorButton("btnConnect")->click();
    EXPECT_EQ(dialogs.fileRequests().back().title, "Connect to Album Database");
    EXPECT_FALSE(editorButton("BtnGetSongs")->isEnabled()) << "nothing stored yet";
    type("txtCompilationName", "New");
    choose("tdbCmbFmt", "MD");
    choose("tdbCmbLen", "74");
    editorButton("btnUpdate")->click();
    EXPECT_TRUE(editorButton("BtnGetSongs")->isEnabled());

    QTest::keyClicks(text("txtStorage"), "B");
    EXPECT_FALSE(editorButton("BtnGetSongs")->isEnabled()) << "an edit is not yet stored";
    editorButton("btnUpdate")->click();
    editorButton("BtnGetSongs")->click();
    ASSERT_EQ(requests.size(), 1);
    EXPECT_EQ(requests[0][0].toLongLong(), 4);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    QPointer<ui::GetSongsWindow> picker = editor->findChild<ui::GetSongsWindow*>();
    ASSERT_FALSE(picker.isNull());
    EXPECT_EQ(picker->compilationId(), 4);
    EXPECT_GT(picker->sourceGrid()->model()->rowCount(), 0) << "the connected albums";
    EXPECT_FALSE(editor->isVisible()) << "the picker hides the editor";
    picker->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(picker.isNull());
    EXPECT_TRUE(editor->isVisible());

    // The picker's TempSource is its connection's own: another writer holding the file does
    // not keep it from being built afresh.
    {
        const testsupport::WriteLock otherWriter(window->state().databasePath);
        dialogs.clear();
        editorButton("BtnGetSongs")->click();
        EXPECT_TRUE(dialogs.messages().empty()) << dialogs.lastMessageText().toStdString();
        picker = editor->findChild<ui::GetSongsWindow*>();
        ASSERT_FALSE(picker.isNull());
        EXPECT_GT(picker->sourceGrid()->model()->rowCount(), 0);
        picker->close();
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(editor->findChild<ui::GetSongsWindow*>(), nullptr);
    EXPECT_TRUE(editor->isVisible());

    dialogs.answerFile(std::nullopt);
    editorButton("btnConnect")->click();
    EXPECT_FALSE(editorButton("BtnGetSongs")->isEnabled()) << "a cancelled connect";
}

TEST_F(EditorWindow, TheCoverButtonsComposeTheThreeModes) {
    open("ID_EditCompilation", 1);
    for (const char* name : {"btnGet0", "btnGet1", "btnGet2"}) {
        EXPECT_TRUE(editorButton(name)->isEnabled()) << name;
    }
    EXPECT_TRUE(field<QRadioButton>("optSort0")->isChecked());
    EXPECT_FALSE(editorButton("btnCopy2Clip")->isEnabled()) << "no cover text yet";

    editorButton("btnGet2")->click();
    EXPECT_EQ(stored("SELECT CoverMemo FROM Compilation WHERE Name = 'Mix'"),
              "1. Adams: Morning  2. Baker: Night Train\n");
    EXPECT_EQ(boldRanges(*cover()->document()), (QStringList{"3+7", "22+7"}));
    EXPECT_TRUE(editorButton("btnCopy2Clip")->isEnabled());

    field<QRadioButton>("optSort1")->click();
    editorButton("btnGet1")->click();
    EXPECT_EQ(cover()->toPlainText(), "Adams: Gold / Baker: Gold \n");
    EXPECT_EQ(boldRanges(*cover()->document()), (QStringList{"0+7", "14+7"}));
    editorButton("btnGet0")->click();
    EXPECT_EQ(cover()->toPlainText(), "Adams / Baker \n");
    EXPECT_TRUE(boldRanges(*cover()->document()).isEmpty());

    // The composed cover is stored as the box shows it by Update.
    editorButton("btnUpdate")->click();
    EXPECT_TRUE(rtf::isRtf(stored("SELECT CoverMemo FROM Compilation WHERE Name = 'Mix'")));
}

TEST_F(EditorWindow, ACdRomOffersOnlySongsOneLineEach) {
    open("ID_EditCompilation", 0);
    EXPECT_FALSE(editorButton("btnGet0")->isEnabled());
    EXPECT_FALSE(editorButton("btnGet1")->isEnabled());
    EXPECT_FALSE(field<QRadioButton>("optSort0")->isEnabled());
    editorButton("btnGet2")->click();
    EXPECT_EQ(stored("SELECT CoverMemo FROM Compilation WHERE Name = 'Disc'"),
              "1.\tAdams   Morning  [2:45]\r\n2.\tBaker   Night Train  [6:31]\n");
    EXPECT_EQ(boldRanges(*cover()->document()), (QStringList{"3+7", "30+7"}));
    EXPECT_EQ(testsupport::summarize(*cover()->document())[1].firstLineTwips, -400);

    // Another format disables the cover buttons until the next Update.
    choose("tdbCmbFmt", "MD");
    EXPECT_FALSE(editorButton("btnGet2")->isEnabled());
    editorButton("btnUpdate")->click();
    EXPECT_TRUE(editorButton("btnGet0")->isEnabled());
}

TEST_F(EditorWindow, TheClipboardAndTheFontKeepThePerformersBold) {
    open("ID_EditCompilation", 1);
    editorButton("btnGet2")->click();
    editorButton("btnCopy2Clip")->click();
    const QMimeData* copied = QGuiApplication::clipboard()->mimeData();
    ASSERT_TRUE(copied->hasFormat("text/rtf"));
    QTextDocument pasted;
    rtf::readInto(QString::fromLatin1(copied->data("text/rtf")), pasted);
    EXPECT_EQ(pasted.toPlainText(), "1. Adams: Morning  2. Baker: Night Train\n");
    EXPECT_EQ(boldRanges(pasted), (QStringList{"3+7", "22+7"}));

    QFont courier(QStringLiteral("Courier"));
    courier.setPointSize(12);
    dialogs.answerFont(courier);
    editorButton("btnFontDialog")->click();
    ASSERT_EQ(dialogs.fontRequests().size(), 1u);
    EXPECT_EQ(dialogs.fontRequests()[0].minPointSize, 6);
    EXPECT_EQ(dialogs.fontRequests()[0].maxPointSize, 14);
    EXPECT_EQ(testsupport::summarize(*cover()->document())[0].runs[0].points, 12);
    EXPECT_EQ(boldRanges(*cover()->document()), (QStringList{"3+7", "22+7"}));
}

TEST_F(EditorWindow, ANewManufacturerIsAddedOnlyOnYes) {
    open("ID_EditCompilation", 1);
    QComboBox* makers = combo("tdbCmbMan");
    makers->setEditText(QString());
    QTest::keyClicks(makers->lineEdit(), "Acme");
    dialogs.answerMessage(platform::MessageAnswer::Yes);
    QTest::keyClick(makers->lineEdit(), Qt::Key_Return);
    ASSERT_EQ(dialogs.messages().size(), 1u);
    EXPECT_EQ(lastMessage(), "Add 'Acme' to the list of available manufacturer/brand names?");
    EXPECT_EQ(dialogs.messages()[0].icon, platform::MessageIcon::Question);
    EXPECT_EQ(stored("SELECT Count(*) FROM LstManufacturer WHERE Manufacturer_P = 'Acme'"), "1");
    EXPECT_NE(makers->findText("Acme"), -1);
    EXPECT_EQ(makers->currentText(), "Acme");

    makers->setEditText(QString());
    QTest::keyClicks(makers->lineEdit(), "Nobody");
    dialogs.answerMessage(platform::MessageAnswer::No);
    QTest::keyClick(makers->lineEdit(), Qt::Key_Return);
    EXPECT_EQ(dialogs.messages().size(), 2u);
    EXPECT_EQ(makers->currentText(), "");
    EXPECT_EQ(stored("SELECT Count(*) FROM LstManufacturer WHERE Manufacturer_P = 'Nobody'"), "0");

    makers->setEditText("tdk");  // listed, in another case
    QTest::keyClick(makers->lineEdit(), Qt::Key_Return);
    EXPECT_EQ(dialogs.messages().size(), 2u);
}

TEST_F(EditorWindow, ClosingTheDatabaseClosesTheEditorWithoutStoring) {
    open("ID_EditCompilation", 1);
    type("txtCompilationName", "Unsaved");
    window->runTool("ID_CloseFile");
    EXPECT_TRUE(editor.isNull());
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(dialogs.messages().empty());
    EXPECT_FALSE(window->session().isOpen());
    EXPECT_EQ(window->windowTitle(), "Mixorama");
    EXPECT_EQ(stored("SELECT Name FROM Compilation WHERE CompilationID_P = 2"), "Mix");
}

TEST_F(EditorWindow, TheCaptionsAcceleratorsPressTheirButtons) {
    open("ID_NewCompilation");
    editor->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(editor));
    // Shortcuts are looked up where the window system delivers keys, the window; a button's
    // accelerator clicks it a moment later.
    QTest::keyClick(editor->windowHandle(), Qt::Key_U, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !dialogs.messages().empty(); }, 2000));
    EXPECT_EQ(lastMessage(), "Field 'Name': a value is requiered.");
    const size_t asked = dialogs.fileRequests().size();
    QTest::keyClick(editor->windowHandle(), Qt::Key_C, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return dialogs.fileRequests().size() > asked; }, 2000));
    EXPECT_EQ(dialogs.fileRequests().back().title, "Connect to Album Database");

    // Leaving the manufacturer list with a new name asks, once.
    combo("tdbCmbMan")->setFocus();
    QTest::keyClicks(combo("tdbCmbMan")->lineEdit(), "Leaver");
    dialogs.answerMessage(platform::MessageAnswer::Yes);
    QTest::keyClick(editor->windowHandle(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), text("txtStorage"));
    EXPECT_EQ(lastMessage(), "Add 'Leaver' to the list of available manufacturer/brand names?");
    EXPECT_EQ(stored("SELECT Count(*) FROM LstManufacturer WHERE Manufacturer_P = 'Leaver'"), "1");
}

TEST_F(EditorWindow, TabFollowsTheFieldsAndTheRequiredOnesAreMarked) {
    open("ID_EditCompilation", 1);
    QStringList chain;
    QWidget* widget = text("txtCompilationName");
    do {
        if (widget->focusPolicy() & Qt::TabFocus && !widget->objectName().isEmpty()) {
            chain << widget->objectName();
        }
        widget = widget->nextInFocusChain();
    } while (widget != text("txtCompilationName") && chain.size() < 30);
    EXPECT_EQ(chain.mid(0, 11),
              (QStringList{"txtCompilationName", "tdbCmbFmt", "tdbCmbLen", "tdbCmbMan",
                           "txtStorage", "TDBDateRecording", "txtNotes", "btnUpdate", "btnConnect",
                           "BtnGetSongs", "rtfCover"}));

    const ui::FieldColours many = ui::requiredFieldColours(1 << 24, editor->palette());
    EXPECT_EQ(many.back, editor->palette().color(QPalette::ToolTipBase));
    EXPECT_EQ(text("txtCompilationName")->palette().color(QPalette::Base), many.back);
    EXPECT_EQ(combo("tdbCmbLen")->palette().color(QPalette::Button), many.back);
    EXPECT_NE(text("txtStorage")->palette().color(QPalette::Base), many.back);
    const ui::FieldColours few = ui::requiredFieldColours(256, editor->palette());
    EXPECT_EQ(few.back, editor->palette().color(QPalette::Highlight));
    EXPECT_EQ(few.fore, editor->palette().color(QPalette::HighlightedText));
}

}  // namespace
