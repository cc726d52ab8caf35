// The print tool through the main window, and the preview it opens.
#include <QAction>
#include <QFile>
#include <QFileInfo>
#include <QPrinter>
#include <QProcess>
#include <QScrollArea>

#include "print_tool_fixture.h"

using ui::ReportPreviewWindow;

namespace {

TEST_F(PrintTool, OpensEachPreviewWithItsCaptionBesideTheMainWindow) {
    openThroughToolbar(path);
    EXPECT_EQ(window->toolBar()->reportTypeList()->currentIndex(), 2);
    clickCompilation("Road Trip");
    const QStringList captions{"All Tracks", "Tracks on Selected Compilation",
                               "Recording Protocol"};
    for (int type = 0; type < 3; ++type) {
        ReportPreviewWindow* preview = print(type);
        ASSERT_NE(preview, nullptr) << type;
        EXPECT_EQ(preview->windowTitle(), captions[type]);
        EXPECT_TRUE(preview->isVisible());
        EXPECT_TRUE(preview->isWindow());
        EXPECT_EQ(preview->windowModality(), Qt::NonModal);
        EXPECT_EQ(preview->parentWidget(), window.get());
        EXPECT_EQ(preview->statusText(), "Page 1 of 1");
    }
    EXPECT_TRUE(dialogs.messages().empty()) << dialogs.lastMessageText().toStdString();
    EXPECT_EQ(previews().size(), 3);
}

TEST_F(PrintTool, ClosingTheDatabaseClosesThePreviews) {
    openThroughToolbar(path);
    ASSERT_NE(print(0), nullptr);
    ASSERT_NE(print(2), nullptr);
    window->toolBar()->clickTool("ID_CloseFile");
    EXPECT_TRUE(previews().isEmpty());
    EXPECT_FALSE(window->state().database.isOpen());

    // The next database starts with the recording protocol chosen again.
    window->toolBar()->reportTypeList()->setCurrentIndex(4);
    openThroughToolbar(path);
    EXPECT_EQ(window->toolBar()->reportTypeList()->currentIndex(), 2);
}

TEST_F(PrintTool, RefusesACompilationWithoutTracksAndADatabaseWithoutAny) {
    openThroughToolbar(path);
    clickCompilation("Empty One");
    for (const int type : {1, 2, 5}) {
        dialogs.clear();
        EXPECT_EQ(print(type), nullptr) << type;
        ASSERT_EQ(dialogs.messages().size(), 1u);
        EXPECT_EQ(dialogs.messages()[0].text, "The selected compilation contains no tracks");
        EXPECT_EQ(dialogs.messages()[0].icon, platform::MessageIcon::Information);
    }

    testsupport::execRaw(path, "DELETE FROM CompilationTrack");
    for (const int type : {0, 4}) {
        dialogs.clear();
        EXPECT_EQ(print(type), nullptr);
        EXPECT_EQ(dialogs.lastMessageText(), "No compilation contains any tracks");
    }
    EXPECT_TRUE(previews().isEmpty());
}

TEST_F(PrintTool, ExportsThePdfFilesAndSaysWhenOneCannotBeWritten) {
    const QString data = useTemporaryHome();
    openThroughToolbar(path);
    clickCompilation("Autumn");
    EXPECT_EQ(print(4), nullptr);
    EXPECT_EQ(print(5), nullptr);
    EXPECT_TRUE(dialogs.messages().empty()) << dialogs.lastMessageText().toStdString();
    EXPECT_TRUE(testsupport::fileBytes(data + "/TracksByPerformer.PDF").startsWith("%PDF"));
    EXPECT_TRUE(testsupport::fileBytes(data + "/TracksOnCompilation.PDF").startsWith("%PDF"));

    QFile::setPermissions(data + "/TracksOnCompilation.PDF", QFile::ReadOwner);
    const QByteArray earlier = testsupport::fileBytes(data + "/TracksOnCompilation.PDF");
    print(5);
    ASSERT_EQ(dialogs.messages().size(), 1u);
    EXPECT_EQ(dialogs.messages()[0].text,
              "Cannot write to PDF file. May be it is open?\n"
              "The file or its folder is read-only or missing.");
    EXPECT_EQ(dialogs.messages()[0].icon, platform::MessageIcon::Exclamation);
    EXPECT_EQ(testsupport::fileBytes(data + "/TracksOnCompilation.PDF"), earlier);
    QFile::setPermissions(data + "/TracksOnCompilation.PDF", QFile::ReadOwner | QFile::WriteOwner);
}

class Preview : public PrintTool {
  protected:
    void SetUp() override {
        PrintTool::SetUp();
        testsupport::fillLongCompilation(path, 10, "Long Haul", 200);
        openThroughToolbar(path);
        preview = print(0);
        ASSERT_NE(preview, nullptr);
        ASSERT_GT(preview->pageCount(), 4);
        count = QString::number(preview->pageCount());
        preview->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(preview));
    }
    void key(int key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(preview, Qt::Key(key), modifiers);
    }

    ReportPreviewWindow* preview = nullptr;
    QString count;
};

TEST_F(Preview, PagesTurnWithTheKeysAndStopAtBothEnds) {
    key(Qt::Key_PageDown);
    key(Qt::Key_PageDown);
    EXPECT_EQ(preview->statusText(), "Page 3 of " + count);
    key(Qt::Key_PageUp);
    EXPECT_EQ(preview->pageIndex(), 1);
    key(Qt::Key_End);
    EXPECT_EQ(preview->statusText(), "Page " + count + " of " + count);
    key(Qt::Key_PageDown);
    EXPECT_EQ(preview->statusText(), "Page " + count + " of " + count);
    key(Qt::Key_Home);
    key(Qt::Key_PageUp);
    EXPECT_EQ(preview->statusText(), "Page 1 of " + count);
    preview->findChild<QAction*>("actNextPage")->trigger();
    EXPECT_EQ(preview->pageIndex(), 1);
}

TEST_F(Preview, ZoomsByStepsBetweenFiftyAndFourHundredPercentAndFitsThePage) {
    const auto* scroll = preview->findChild<QScrollArea*>("scrPages");
    const QWidget* page = scroll->widget();
    EXPECT_EQ(preview->zoomMode(), ReportPreviewWindow::ZoomMode::FitPage);
    const QSize room = scroll->viewport()->size();
    EXPECT_LE(page->height(), room.height());
    EXPECT_LE(page->width(), room.width());
    EXPECT_TRUE(page->height() > room.height() - 40 || page->width() > room.width() - 40)
        << page->width() << "x" << page->height() << " in " << room.width() << "x" << room.height();
    // The page follows the window's size.
    preview->resize(preview->width() / 2, preview->height() / 2);
    EXPECT_LE(page->height(), scroll->viewport()->height());
    EXPECT_GT(page->height(), scroll->viewport()->height() - 40);

    preview->setZoomPercent(100);
    const QSize trueSize = page->size();
    key(Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_DOUBLE_EQ(preview->zoom(), 1.5);
    EXPECT_NEAR(page->width(), trueSize.width() * 1.5, 1);
    for (int i = 0; i < 6; ++i) {
        key(Qt::Key_Plus, Qt::ControlModifier);
    }
    EXPECT_DOUBLE_EQ(preview->zoom(), 4.0);
    for (int i = 0; i < 8; ++i) {
        key(Qt::Key_Minus, Qt::ControlModifier);
    }
    EXPECT_DOUBLE_EQ(preview->zoom(), 0.5);

    auto* zoomList = preview->findChild<QComboBox*>("cmbZoom");
    zoomList->activated(zoomList->findText("Fit Width"));
    EXPECT_EQ(preview->zoomMode(), ReportPreviewWindow::ZoomMode::FitWidth);
    EXPECT_LE(page->width(), scroll->viewport()->width());
    EXPECT_GT(page->width(), scroll->viewport()->width() - 40);
    zoomList->activated(zoomList->findText("200 %"));
    EXPECT_DOUBLE_EQ(preview->zoom(), 2.0);
}

TEST_F(Preview, PrintsAndSavesEveryPage) {
    const QString printed = dir.file("printed.pdf");
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(printed);
    preview->printTo(printer);
    QProcess info;
    info.start("pdfinfo", {printed});
    info.waitForFinished(30000);
    const QString pdfInfo = QString::fromUtf8(info.readAllStandardOutput());
    EXPECT_TRUE(pdfInfo.contains(QRegularExpression("Pages:\\s+" + count + "\\n")))
        << pdfInfo.toStdString();
    EXPECT_TRUE(pdfInfo.contains(QRegularExpression("Page size: +.*\\((A4|letter)\\)")))
        << pdfInfo.toStdString();

    const QString saved = dir.file("saved.pdf");
    dialogs.answerFile(saved);
    key(Qt::Key_S, Qt::ControlModifier);
    ASSERT_EQ(dialogs.saveRequests().size(), 1u);
    EXPECT_EQ(dialogs.saveRequests()[0].fileName, "All Tracks.pdf");
    EXPECT_TRUE(testsupport::fileBytes(saved).startsWith("%PDF"));

    QFile::setPermissions(saved, QFile::ReadOwner);
    dialogs.answerFile(saved);
    key(Qt::Key_S, Qt::ControlModifier);
    EXPECT_TRUE(
        dialogs.lastMessageText().startsWith("Cannot write to PDF file. May be it is open?"));
    QFile::setPermissions(saved, QFile::ReadOwner | QFile::WriteOwner);
    if (QFileInfo::exists("/dev/full")) {  // a full disk is named as the cause
        dialogs.answerFile("/dev/full");
        key(Qt::Key_S, Qt::ControlModifier);
        EXPECT_EQ(dialogs.lastMessageText(),
                  "Cannot write to PDF file. May be it is open?\nNo space left on device.");
    }
}

}  // namespace
