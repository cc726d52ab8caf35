#pragma once

#include <QDialog>
#include <array>

#include "report_engine/calibration.h"

class QComboBox;
class QDoubleSpinBox;
class QLabel;
class QPushButton;

namespace platform {
class Dialogs;
}

namespace ui {

// "Printer Calibration": a printer's correction from what a ruler shows on the test page. The
// user shows the test page (and prints it from its preview on the printer), measures the frame
// and enters the four distances; the dialog says what the correction does and Save keeps it
// under the printer's name, for covers sent to that printer.
class PrinterCalibrationDialog : public QDialog {
    Q_OBJECT
  public:
    // printers: the printers set up on this computer; the first shown is current (if listed).
    PrinterCalibrationDialog(const QStringList& printers, const QString& current,
                             platform::Dialogs& dialogs, QWidget* parent);

    // The printers set up on this computer, and the one the system prints to unless told.
    static QStringList installedPrinters();
    static QString defaultPrinter();

    report_engine::Calibration enteredCalibration() const;

  private:
    void buildControls(const QStringList& printers);
    void showPrinter();
    void showMeasurement(const report_engine::FrameMeasurement& measured);
    void describe();
    void showTestPage();
    void save();

    platform::Dialogs& dialogs_;
    QComboBox* printer_ = nullptr;
    std::array<QDoubleSpinBox*, 4> measured_{};  // left, top, width, height
    QLabel* sentence_ = nullptr;
    QPushButton* save_ = nullptr;
};

}  // namespace ui
