#include "ui/windows/printer_calibration_dialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QLabel>
#include <QPrinterInfo>
#include <QPushButton>
#include <QVBoxLayout>

#include "platform/dialogs.h"
#include "platform/user_settings.h"
#include "reports/calibration_page.h"
#include "shell/printer_calibrations.h"
#include "ui/controls/focus_order.h"
#include "ui/windows/report_preview_window.h"

namespace ui {

namespace {

const char* const kMeasureCaptions[] = {
    "&Left edge to frame:", "&Top edge to frame:", "Frame &width:", "Frame &height:"};
const char* const kMeasureNames[] = {"numLeft", "numTop", "numWidth", "numHeight"};

QDoubleSpinBox* millimetreBox(const char* name, double low, double high, QWidget* parent) {
    auto* box = new QDoubleSpinBox(parent);
    box->setObjectName(QString::fromLatin1(name));
    box->setRange(low, high);
    box->setDecimals(1);
    box->setSingleStep(0.5);
    box->setSuffix(QStringLiteral(" mm"));
    return box;
}

}  // namespace

PrinterCalibrationDialog::PrinterCalibrationDialog(const QStringList& printers,
                                                   const QString& current,
                                                   platform::Dialogs& dialogs, QWidget* parent)
    : QDialog(parent), dialogs_(dialogs) {
    setObjectName(QStringLiteral("frmPrinterCalibration"));
    setWindowTitle(tr("Printer Calibration"));
    buildControls(printers);
    setMinimumWidth(440);
    printer_->setCurrentIndex(qMax(0, printers.indexOf(current)));
    showPrinter();
    orderFocusByLayout(*this);
}

QStringList PrinterCalibrationDialog::installedPrinters() {
    return QPrinterInfo::availablePrinterNames();
}

QString PrinterCalibrationDialog::defaultPrinter() {
    return QPrinterInfo::defaultPrinterName();
}

void PrinterCalibrationDialog::buildControls(const QStringList& printers) {
    auto* layout = new QVBoxLayout(this);
    auto* form = new QFormLayout;
    printer_ = new QComboBox(this);
    printer_->setObjectName(QStringLiteral("cmbPrinter"));
    printer_->addItems(printers);
    form->addRow(tr("&Printer:"), printer_);
    auto* howTo = new QLabel(
        printers.isEmpty()
            ? tr("No printer is set up on this computer: covers can be saved as PDF only.")
            : tr("Show the test page and print it at 100 % on this printer. Measure it with a "
                 "ruler and enter what you measured."),
        this);
    howTo->setWordWrap(true);
    form->addRow(howTo);
    auto* testPage = new QPushButton(tr("Show Test Pa&ge..."), this);
    testPage->setObjectName(QStringLiteral("btnTestPage"));
    form->addRow(testPage);
    const report_engine::FrameMeasurement nominal = report_engine::nominalTestFrame();
    const double lows[] = {0, 0, nominal.widthMm / 2, nominal.heightMm / 2};
    const double highs[] = {100, 100, nominal.widthMm * 2, nominal.heightMm * 2};
    for (int i = 0; i < 4; ++i) {
        measured_[i] = millimetreBox(kMeasureNames[i], lows[i], highs[i], this);
        form->addRow(tr(kMeasureCaptions[i]), measured_[i]);
        connect(measured_[i], &QDoubleSpinBox::valueChanged, this,
                &PrinterCalibrationDialog::describe);
    }
    layout->addLayout(form);
    sentence_ = new QLabel(this);
    sentence_->setObjectName(QStringLiteral("lblCorrection"));
    sentence_->setWordWrap(true);
    layout->addWidget(sentence_);
    auto* buttons = new QDialogButtonBox(this);
    QPushButton* reset = buttons->addButton(tr("&Reset"), QDialogButtonBox::ResetRole);
    save_ = buttons->addButton(tr("&Save"), QDialogButtonBox::AcceptRole);
    save_->setObjectName(QStringLiteral("btnSave"));
    reset->setObjectName(QStringLiteral("btnReset"));
    buttons->addButton(QDialogButtonBox::Close)->setText(tr("&Close"));
    layout->addWidget(buttons);
    for (QWidget* input : std::initializer_list<QWidget*>{printer_, measured_[0], measured_[1],
                                                          measured_[2], measured_[3], save_}) {
        input->setEnabled(!printers.isEmpty());
    }
    connect(printer_, &QComboBox::currentIndexChanged, this,
            &PrinterCalibrationDialog::showPrinter);
    connect(testPage, &QPushButton::clicked, this, &PrinterCalibrationDialog::showTestPage);
    connect(reset, &QPushButton::clicked, this,
            [this] { showMeasurement(report_engine::nominalTestFrame()); });
    connect(save_, &QPushButton::clicked, this, &PrinterCalibrationDialog::save);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

report_engine::Calibration PrinterCalibrationDialog::enteredCalibration() const {
    return report_engine::calibrationFromMeasurement({measured_[0]->value(), measured_[1]->value(),
                                                      measured_[2]->value(),
                                                      measured_[3]->value()});
}

// The printer's calibration as the measurement it was made from.
void PrinterCalibrationDialog::showPrinter() {
    const QString name = printer_->currentText();
    showMeasurement(name.isEmpty()
                        ? report_engine::nominalTestFrame()
                        : report_engine::measurementOfCalibration(shell::printerCalibration(name)));
}

void PrinterCalibrationDialog::showMeasurement(const report_engine::FrameMeasurement& measured) {
    const double values[] = {measured.leftMm, measured.topMm, measured.widthMm, measured.heightMm};
    for (int i = 0; i < 4; ++i) {
        measured_[i]->setValue(values[i]);
    }
    describe();
}

void PrinterCalibrationDialog::describe() {
    const report_engine::Calibration calibration = enteredCalibration();
    sentence_->setText(report_engine::isPlausible(calibration)
                           ? shell::calibrationSentence(calibration)
                           : tr("These measurements are too far from the test page's frame to "
                                "be a printer's error: measure again."));
    sentence_->setAccessibleName(sentence_->text());
}

void PrinterCalibrationDialog::showTestPage() {
    auto* preview = new ReportPreviewWindow(reports::calibrationTestPage(),
                                            tr("Printer Calibration Test Page"), dialogs_, this);
    preview->setWindowModality(Qt::WindowModal);
    preview->show();
}

void PrinterCalibrationDialog::save() {
    const report_engine::Calibration calibration = enteredCalibration();
    if (!report_engine::isPlausible(calibration)) {
        dialogs_.exclamation(sentence_->text());
        return;
    }
    if (!shell::storePrinterCalibration(printer_->currentText(), calibration)) {
        dialogs_.exclamation(tr("The calibration could not be stored: the settings file \"%1\" "
                                "cannot be written.")
                                 .arg(platform::userSettings().fileName()));
        return;
    }
    accept();
}

}  // namespace ui
