// The print tool through the main window: the previews, covers and PDF files of its choices.
#include <QDoubleSpinBox>
#include <QFile>
#include <QLabel>

#include "platform/user_settings.h"
#include "reports/cover_source.h"
#include "shell/print_command.h"
#include "shell/printer_calibrations.h"
#include "shell/toolbar_tools.h"
#include "support/list_samples.h"
#include "ui/windows/printer_calibration_dialog.h"
#include "ui/windows/report_preview_window.h"
#include "window_fixture.h"

using ui::ReportPreviewWindow;

namespace {

// The list samples: "Road Trip" (MD, 3 tracks), "Autumn" (CD-ROM, 2 tracks), "Empty One".
class PrintTool : public WindowTest {
  protected:
    void SetUp() override {
        WindowTest::SetUp();
        path = makeDatabase("lists.mdb");
        testsupport::fillListSamples(path);
        openThroughToolbar(path);
    }
    void TearDown() override {
        WindowTest::TearDown();
        qputenv("MIXORAMA_HOME", programHome);
    }
    // Makes the compilation current, chooses the print choice and clicks Print; returns the
    // window it opened, if any.
    ReportPreviewWindow* print(const QString& name, int choice) {
        testsupport::clickRow(window->grid(), testsupport::rowWith(window->grid(), 0, name), 0);
        const QList<ReportPreviewWindow*> before = previews();
        window->toolBar()->reportTypeList()->setCurrentIndex(choice);
        clickTool("ID_Print");
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
        for (ReportPreviewWindow* preview : previews()) {
            if (!before.contains(preview)) {
                return preview;
            }
        }
        return nullptr;
    }
    QList<ReportPreviewWindow*> previews() const {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return window->findChildren<ReportPreviewWindow*>();
    }
    void expectRefused(const QString& name, int choice, const QString& message) {
        dialogs.clear();
        EXPECT_EQ(print(name, choice), nullptr) << name.toStdString() << " " << choice;
        EXPECT_EQ(dialogs.lastMessageText(), message);
    }

    QString path;
    QByteArray programHome = qgetenv("MIXORAMA_HOME");
};

TEST_F(PrintTool, EachPreviewChoiceOpensItsReportUntilTheDatabaseCloses) {
    EXPECT_EQ(window->toolBar()->reportTypeList()->currentIndex(), shell::kDefaultReportType);
    for (const shell::PrintChoice& choice : shell::printChoices()) {
        if (choice.output != shell::PrintOutput::Preview) {
            continue;
        }
        ReportPreviewWindow* preview = print("Road Trip", choice.index);
        ASSERT_NE(preview, nullptr) << choice.index;
        EXPECT_EQ(preview->windowTitle(), reports::listReportCaption(choice.report));
        EXPECT_TRUE(preview->isVisible() && preview->parentWidget() == window.get());
    }
    EXPECT_TRUE(dialogs.messages().empty()) << dialogs.lastMessageText().toStdString();
    // Ctrl+= zooms in as Ctrl+plus does, the zoom list takes Tab, Escape closes the preview.
    const qsizetype open = previews().size();
    ReportPreviewWindow* last = previews().constLast();
    last->setZoomPercent(100);
    const double zoom = last->zoom();
    testsupport::pressInWindow(last, Qt::Key_Equal, Qt::ControlModifier);
    EXPECT_GT(last->zoom(), zoom);
    EXPECT_TRUE(testsupport::control(last, "cmbZoom")->focusPolicy() & Qt::TabFocus);
    testsupport::pressInWindow(last, Qt::Key_Escape);
    EXPECT_EQ(previews().size(), open - 1);
    clickTool("ID_CloseFile");
    EXPECT_TRUE(previews().isEmpty());
}

TEST_F(PrintTool, TheCoverChoiceOpensTheFormatsCoverViewerAndRefusalsSayWhy) {
    for (const QString name : {"Road Trip", "Autumn"}) {
        ReportPreviewWindow* viewer = print(name, 3);
        ASSERT_NE(viewer, nullptr) << dialogs.lastMessageText().toStdString();
        const QString format = name == "Autumn" ? "CD-ROM" : "MD";
        const std::optional<shell::CoverView> view = shell::coverView(format);
        EXPECT_EQ(viewer->windowTitle(), view->caption);
        EXPECT_EQ(viewer->zoomMode(), view->zoomPercent ? ReportPreviewWindow::ZoomMode::Percent
                                                        : ReportPreviewWindow::ZoomMode::FitPage);
    }
    testsupport::execRaw(path, "UPDATE Compilation SET Format = 'Cassette' WHERE Name = 'Autumn'");
    expectRefused("Autumn", 3, reports::noCoverMessage("Cassette"));
    expectRefused("Empty One", 1, shell::kNoTracksOnCompilation);
    testsupport::execRaw(path, "DELETE FROM CompilationTrack");
    expectRefused("Road Trip", 0, shell::kNoTracksAnywhere);
    testsupport::execRaw(path, "DELETE FROM Compilation WHERE Name = 'Road Trip'");
    expectRefused("Road Trip", 1, shell::kCompilationGone);
    EXPECT_FALSE(testsupport::columnTexts(window->grid(), 0).contains("Road Trip"));
}

TEST_F(PrintTool, PdfChoicesWriteTheirFilesAndAFailedWriteSaysSo) {
    qputenv("MIXORAMA_HOME", dir.path().toLocal8Bit());
    for (const int choice : {4, 5}) {
        EXPECT_EQ(print("Autumn", choice), nullptr);
        const QString file = shell::pdfPath(*shell::printChoice(choice));
        EXPECT_TRUE(testsupport::fileBytes(file).startsWith("%PDF"));
        EXPECT_TRUE(dialogs.messages().empty()) << dialogs.lastMessageText().toStdString();
    }
    const QString file = shell::pdfPath(*shell::printChoice(5));
    QFile::setPermissions(file, QFile::ReadOwner);
    print("Autumn", 5);
    EXPECT_TRUE(dialogs.lastMessageText().startsWith(shell::kPdfWriteError));
    QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner);
}

// The calibration keeps each printer's correction under its name (any name), taken from what the
// ruler showed on the test page, and shows it again as that measurement. Measurements that
// cannot be a printer's error are refused; a PDF is never calibrated.
TEST_F(PrintTool, TheCalibrationDialogKeepsEachPrintersCorrection) {
    platform::userSettings().remove("PrinterCalibration");
    const QString label = "Label/Printer \"2\" ü";
    const auto measure = [&](const QString& printer, double left, double width) {
        ui::PrinterCalibrationDialog dialog({"Office", label}, printer, dialogs, window.get());
        testsupport::control<QDoubleSpinBox>(&dialog, "numLeft")->setValue(left);
        testsupport::control<QDoubleSpinBox>(&dialog, "numWidth")->setValue(width);
        clickButton(&dialog, "btnSave");
        return dialog.result();
    };
    EXPECT_EQ(measure(label, 21.5, 168.3), QDialog::Accepted);  // 1.5 mm right, at 99 %
    const report_engine::Calibration stored = shell::printerCalibration(label);
    EXPECT_NEAR(stored.scaleXPercent, 100 / 0.99, 1e-9);
    EXPECT_NEAR(stored.offsetXMm, 20 - 21.5 / 0.99, 1e-9);
    EXPECT_EQ(stored.scaleYPercent, 100);
    EXPECT_TRUE(shell::printerCalibration("Office").isIdentity());
    EXPECT_TRUE(shell::coverCalibration(label, true).isIdentity());
    EXPECT_EQ(shell::coverCalibration(label, false), stored);
    ui::PrinterCalibrationDialog again({"Office", label}, label, dialogs, window.get());
    EXPECT_NEAR(testsupport::control<QDoubleSpinBox>(&again, "numLeft")->value(), 21.5, 1e-9);
    EXPECT_EQ(testsupport::control<QLabel>(&again, "lblCorrection")->text(),
              "Covers are moved 1.7 mm left and printed at 101.0 % across and 100.0 % down.");
    EXPECT_NE(measure("Office", 80, 85), QDialog::Accepted);  // 6 cm off: a typing error
    EXPECT_TRUE(dialogs.lastMessageText().contains("too far"))
        << dialogs.lastMessageText().toStdString();
    EXPECT_TRUE(shell::printerCalibration("Office").isIdentity());
}

}  // namespace
