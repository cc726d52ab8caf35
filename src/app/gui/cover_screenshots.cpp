#include "gui/cover_screenshots.h"

#include <QDir>
#include <QImage>
#include <QPainter>
#include <QTextStream>

#include "assembly/cover_composer.h"
#include "engine/database.h"
#include "engine/recordset.h"
#include "gui/screenshots.h"
#include "platform/scripted_dialogs.h"
#include "report_engine/painter.h"
#include "reports/calibration_page.h"
#include "reports/cover_report.h"
#include "ui/controls/cover_text_box.h"
#include "ui/controls/main_toolbar.h"
#include "ui/windows/overview_window.h"
#include "ui/windows/printer_calibration_dialog.h"
#include "ui/windows/report_preview_window.h"

namespace app {

namespace {

constexpr int kPictureDpi = 100;
constexpr int kCoverChoice = 3;  // "SEL - Cover" in the print tool's list
// Enough lines of Arial 10 to leave no room for the title and time on the inlay.
constexpr int kLongCoverLines = 26;

void storeCover(engine::Database& database, qint64 id, const QString& rtf) {
    engine::Recordset row = database.openRecordset(
        QStringLiteral("SELECT CoverMemo FROM Compilation WHERE CompilationID_P = ") +
        QString::number(id));
    row.edit();
    row.setValue(QStringLiteral("CoverMemo"), rtf);
    row.update();
}

// Repeats the composed lines (the last ends with a line feed) up to the count.
QString lengthened(const QString& composed, int lineCount) {
    const QStringList lines = composed.chopped(1).split(QStringLiteral("\r\n"));
    QStringList longer;
    while (longer.size() < lineCount) {
        longer.append(lines.value(longer.size() % lines.size()));
    }
    return longer.join(QStringLiteral("\r\n")) + u'\n';
}

// The cover text as the editor's cover buttons leave it: composed, in the format's font, the
// performers bold; with a line count, the lines repeated up to it.
QString composedAsTheEditorDoes(engine::Database& database, qint64 id, const QString& format,
                                assembly::CoverMode mode, int lineCount = 0) {
    assembly::ComposedCover composed =
        assembly::retrieveCoverData(database, id, mode, format, true);
    if (lineCount > 0) {
        composed.text = lengthened(composed.text, lineCount);
    }
    ui::CoverTextBox box;
    box.setStoredText(QString());
    box.setDefaultFont(format);
    box.setStoredText(composed.text);
    if (composed.setsParagraphs) {
        box.setHangingIndent(composed.hangingIndentTwips, assembly::kCoverTabStopTwips);
    }
    ui::CoverTextBox::BoldRanges bold;
    for (const assembly::BoldRange& range : composed.bold) {
        bold.emplace_back(range.start, range.length);
    }
    box.boldPerformers(bold);
    return box.storedText();
}

bool savePage(const report_engine::PageModel& cover, const QString& folder, const QString& name) {
    const QSize paper = cover.setup.size();
    QImage image(paper.width() * kPictureDpi / 1440, paper.height() * kPictureDpi / 1440,
                 QImage::Format_RGB32);
    image.setDotsPerMeterX(qRound(kPictureDpi / 0.0254));
    image.setDotsPerMeterY(qRound(kPictureDpi / 0.0254));
    image.fill(Qt::white);
    QPainter painter(&image);
    report_engine::drawPage(painter, cover.pages.value(0));
    painter.end();
    const bool saved = image.save(QDir(folder).filePath(name + QStringLiteral(".png")));
    QTextStream(stdout) << (saved ? "wrote " : "could not write ") << name << ".png" << Qt::endl;
    return saved;
}

// The cover viewer the print tool opens with the compilation current in the main list.
bool viewerPicture(ui::OverviewWindow& window, qint64 id, const QString& folder,
                   const QString& name) {
    engine::Recordset& rows = window.compilations()->recordset();
    rows.moveFirst();
    while (!rows.eof() && rows.value(QStringLiteral("CompilationID_P")).toLongLong() != id) {
        rows.moveNext();
    }
    window.toolBar()->reportTypeList()->setCurrentIndex(kCoverChoice);
    window.runTool(QStringLiteral("ID_Print"));
    const QList<ui::ReportPreviewWindow*> viewers = window.findChildren<ui::ReportPreviewWindow*>();
    if (rows.eof() || viewers.isEmpty()) {
        return false;
    }
    const bool saved = savePicture(viewers.last(), folder, name);
    delete viewers.last();
    return saved;
}

// The cover's page, and the cover in its viewer.
bool coverAndViewer(ui::OverviewWindow& window, qint64 id, const QString& folder,
                    const QString& name) {
    const bool page = savePage(reports::buildCover(window.state().database, id), folder, name);
    return viewerPicture(window, id, folder, QStringLiteral("viewer-") + name) && page;
}

// The calibration dialog on two printers, and the test page it shows.
bool calibrationPictures(ui::OverviewWindow& window, const QString& folder) {
    platform::ScriptedDialogs dialogs;
    ui::PrinterCalibrationDialog dialog({QStringLiteral("Office Laser"), QStringLiteral("Label")},
                                        QStringLiteral("Office Laser"), dialogs, &window);
    bool ok = savePicture(&dialog, folder, QStringLiteral("printer-calibration"));
    ui::ReportPreviewWindow page(reports::calibrationTestPage(),
                                 QStringLiteral("Printer Calibration Test Page"), dialogs);
    ok &= savePicture(&page, folder, QStringLiteral("preview-calibration-page"));
    return ok;
}

}  // namespace

std::optional<qint64> firstWithTracks(engine::Database& database, const QString& format) {
    engine::Recordset rows = database.openRecordset(
        QStringLiteral("SELECT CompilationID_P FROM Compilation WHERE SumTrack > 0 AND "
                       "LCase(Format) = '") +
            format + QStringLiteral("' ORDER BY Name"),
        engine::RecordsetType::Snapshot);
    if (rows.eof()) {
        return std::nullopt;
    }
    return rows.value(0).toLongLong();
}

bool coverPictures(ui::OverviewWindow& window, const QString& folder) {
    engine::Database& database = window.state().database;
    const std::optional<qint64> md = firstWithTracks(database, QStringLiteral("md"));
    const std::optional<qint64> cd = firstWithTracks(database, QStringLiteral("cd-rom"));
    if (!md || !cd) {
        return false;
    }
    storeCover(database, *md,
               composedAsTheEditorDoes(database, *md, QStringLiteral("MD"),
                                       assembly::CoverMode::PerformerAlbum));
    bool ok = coverAndViewer(window, *md, folder, QStringLiteral("cover-md"));
    storeCover(database, *cd,
               composedAsTheEditorDoes(database, *cd, QStringLiteral("CD-ROM"),
                                       assembly::CoverMode::PerformerSong));
    ok &= coverAndViewer(window, *cd, folder, QStringLiteral("cover-cdrom"));
    storeCover(database, *cd,
               composedAsTheEditorDoes(database, *cd, QStringLiteral("CD-ROM"),
                                       assembly::CoverMode::PerformerSong, kLongCoverLines));
    ok &= coverAndViewer(window, *cd, folder, QStringLiteral("cover-cdrom-long"));
    ok &= calibrationPictures(window, folder);
    return ok;
}

}  // namespace app
