// The cover viewer the print tool opens on the current compilation's cover.
#include <QComboBox>
#include <QPrinter>
#include <QScreen>
#include <QScrollArea>

#include "print_tool_fixture.h"
#include "support/pdf_pages.h"
#include "ui/windows/cover_viewer.h"

using testsupport::darkRuns;
using testsupport::kMmPerRenderedPixel;
using testsupport::renderedPixelOf;
using ui::ReportPreviewWindow;

namespace {

constexpr int kCoverChoice = 3;

// The text a control of the cover shows on its page; empty when it is not there.
QString shownText(const ReportPreviewWindow& viewer, const QString& control) {
    for (const report::PageItem& item : viewer.model().pages.value(0).items) {
        if (item.name.compare(control, Qt::CaseInsensitive) == 0) {
            return item.text;
        }
    }
    return QString();
}

class CoverViewer : public PrintTool {
  protected:
    void setFormat(qint64 id, const QString& format) {
        testsupport::execRaw(path, QStringLiteral("UPDATE Compilation SET Format = '%1' WHERE "
                                                  "CompilationID_P = %2")
                                       .arg(format)
                                       .arg(id));
    }
    ReportPreviewWindow* coverOf(const QString& name) {
        clickCompilation(name);
        return print(kCoverChoice);
    }
    void expectNoViewerWith(const QString& name, const QString& message) {
        dialogs.clear();
        EXPECT_EQ(coverOf(name), nullptr) << name.toStdString();
        ASSERT_EQ(dialogs.messages().size(), 1u) << name.toStdString();
        EXPECT_EQ(dialogs.messages()[0].text, message);
        EXPECT_EQ(dialogs.messages()[0].icon, platform::MessageIcon::Information);
    }
    // The viewer's size in pixels for a size in twips, at the screen's logical resolution.
    static QSize pixels(const QWidget& widget, QSizeF twips) {
        return QSize(qRound(twips.width() * widget.logicalDpiX() / 1440.0),
                     qRound(twips.height() * widget.logicalDpiY() / 1440.0));
    }
    void expectPlacedAsCoverViewer(const ReportPreviewWindow& viewer) {
        EXPECT_TRUE(viewer.isVisible());
        EXPECT_TRUE(viewer.isWindow());
        EXPECT_EQ(viewer.windowModality(), Qt::NonModal);
        EXPECT_EQ(viewer.parentWidget(), window.get());
        EXPECT_EQ(viewer.frameGeometry().topLeft(), viewer.screen()->geometry().topLeft());
        EXPECT_EQ(viewer.size(), pixels(viewer, QSize(11090, 8600)));
    }
};

TEST_F(CoverViewer, AnMdCompilationInAnyLetterCaseOpensTheMdCoverAt110Percent) {
    for (const QString format : {"MD", "md", "mD"}) {
        setFormat(1, format);
        openThroughToolbar(path);
        ReportPreviewWindow* viewer = coverOf("Road Trip");
        ASSERT_NE(viewer, nullptr)
            << format.toStdString() << " " << dialogs.lastMessageText().toStdString();
        EXPECT_EQ(viewer->windowTitle(), "MD Cover");
        EXPECT_EQ(viewer->zoomMode(), ReportPreviewWindow::ZoomMode::Percent);
        EXPECT_DOUBLE_EQ(viewer->zoom(), 1.1);
        const QComboBox* zoomList = viewer->findChild<QComboBox*>("cmbZoom");
        EXPECT_EQ(zoomList->currentText(), "110 %");
        // Between the list's steps, once.
        EXPECT_EQ(zoomList->findText("100 %") + 1, zoomList->currentIndex());
        EXPECT_EQ(zoomList->findText("150 %") - 1, zoomList->currentIndex());
        expectPlacedAsCoverViewer(*viewer);
        EXPECT_EQ(shownText(*viewer, "fldTitle"), "Road Trip");
        // At 110 % the strip is a tenth larger than on paper.
        const QWidget* page = viewer->findChild<QScrollArea*>("scrPages")->widget();
        EXPECT_EQ(page->size(), pixels(*page, QSizeF(viewer->model().setup.size()) * 1.1));
    }
    EXPECT_TRUE(dialogs.messages().empty()) << dialogs.lastMessageText().toStdString();
}

TEST_F(CoverViewer, ACdRomCompilationOpensTheInlayFittedToTheWindow) {
    setFormat(2, "cd-Rom");
    openThroughToolbar(path);
    ReportPreviewWindow* viewer = coverOf("Autumn");
    ASSERT_NE(viewer, nullptr) << dialogs.lastMessageText().toStdString();
    EXPECT_EQ(viewer->windowTitle(), "CD-ROM Cover");
    EXPECT_EQ(viewer->zoomMode(), ReportPreviewWindow::ZoomMode::FitPage);
    expectPlacedAsCoverViewer(*viewer);
    const QScrollArea* scroll = viewer->findChild<QScrollArea*>("scrPages");
    const QSize room = scroll->viewport()->size();
    const QSize page = scroll->widget()->size();
    EXPECT_LE(page.height(), room.height());
    EXPECT_GT(page.height(), room.height() - 40);
    EXPECT_EQ(shownText(*viewer, "lblSplineL"), "Autumn");
    EXPECT_EQ(shownText(*viewer, "lblSplineR"), "Autumn");
    EXPECT_EQ(shownText(*viewer, "fldTime"), "Total Playtime 1:00:00");
}

TEST_F(CoverViewer, AFormatWithoutCoverOrACompilationWithoutTracksGetsItsMessageOnly) {
    testsupport::execRaw(path,
                         "INSERT INTO Compilation (CompilationID_P, Name, SumTrack, SumTime, "
                         "Format, C_Length) VALUES (4, 'Old Tape', 2, 100, 'Cassette', 90), "
                         "(5, 'Blank Tape', 0, 0, 'DAT', 90)");
    openThroughToolbar(path);
    expectNoViewerWith("Old Tape", "There is no cover available for the format: Cassette");
    // The format is checked before the tracks.
    expectNoViewerWith("Blank Tape", "There is no cover available for the format: DAT");
    expectNoViewerWith("Empty One", "The selected compilation contains no tracks");
    EXPECT_TRUE(previews().isEmpty());
}

TEST_F(CoverViewer, ViewersOnTwoCompilationsKeepTheirOwnCoversUntilTheDatabaseCloses) {
    openThroughToolbar(path);
    ReportPreviewWindow* md = coverOf("Road Trip");
    ReportPreviewWindow* cdRom = coverOf("Autumn");
    ASSERT_NE(md, nullptr);
    ASSERT_NE(cdRom, nullptr);
    ReportPreviewWindow* again = coverOf("Road Trip");
    ASSERT_NE(again, nullptr);
    EXPECT_EQ(previews().size(), 3);
    // Each shows the compilation that was current when it opened.
    EXPECT_EQ(shownText(*md, "fldTitle"), "Road Trip");
    EXPECT_EQ(shownText(*cdRom, "lblSplineL"), "Autumn");
    EXPECT_EQ(shownText(*again, "fldTitle"), "Road Trip");
    EXPECT_TRUE(md->isVisible());
    EXPECT_TRUE(cdRom->isVisible());

    window->toolBar()->clickTool("ID_CloseFile");
    EXPECT_TRUE(previews().isEmpty());
    EXPECT_FALSE(window->state().database.isOpen());
}

TEST_F(CoverViewer, SavedAsPdfTheInlayMeasuresAsOnItsPage) {
    openThroughToolbar(path);
    ReportPreviewWindow* viewer = coverOf("Autumn");
    ASSERT_NE(viewer, nullptr);
    viewer->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(viewer));
    const QString saved = dir.file("inlay.pdf");
    dialogs.answerFile(saved);
    QTest::keyClick(viewer, Qt::Key_S, Qt::ControlModifier);
    ASSERT_EQ(dialogs.saveRequests().size(), 1u);
    EXPECT_EQ(dialogs.saveRequests()[0].fileName, "CD-ROM Cover.pdf");

    const QImage page = testsupport::renderedPdfPage(saved);
    // Across the inlay above its text: frame, fold, fold, frame.
    const QVector<double> across = darkRuns(page, renderedPixelOf(1240 + 200), Qt::Horizontal);
    ASSERT_EQ(across.size(), 4);
    EXPECT_NEAR((across[3] - across[0]) * kMmPerRenderedPixel, 150.0, 0.2);
    EXPECT_NEAR((across[1] - across[0]) * kMmPerRenderedPixel, 6.0, 0.2);
    EXPECT_NEAR((across[3] - across[2]) * kMmPerRenderedPixel, 6.0, 0.2);
    const QVector<double> down = darkRuns(page, renderedPixelOf(1840 + 100), Qt::Vertical);
    ASSERT_EQ(down.size(), 2);
    EXPECT_NEAR((down[1] - down[0]) * kMmPerRenderedPixel, 118.0, 0.2);
}

TEST_F(CoverViewer, PrintedTheMdStripIsTrueToSize) {
    openThroughToolbar(path);
    ReportPreviewWindow* viewer = coverOf("Road Trip");
    ASSERT_NE(viewer, nullptr);
    const QString printed = dir.file("strip.pdf");
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(printed);
    viewer->printTo(printer);

    const QImage page = testsupport::renderedPdfPage(printed);
    const QVector<double> across = darkRuns(page, renderedPixelOf(6000), Qt::Horizontal);
    ASSERT_EQ(across.size(), 2);
    EXPECT_NEAR((across[1] - across[0]) * kMmPerRenderedPixel, 45.0, 0.2);
    const QVector<double> down = darkRuns(page, renderedPixelOf(1200 + 80), Qt::Vertical);
    ASSERT_GE(down.size(), 2);
    EXPECT_NEAR((down.last() - down.first()) * kMmPerRenderedPixel, 254.0, 0.2);
    EXPECT_NEAR(down.first() * kMmPerRenderedPixel, 800 * 25.4 / 1440, 0.2);
}

}  // namespace
