#pragma once

#include <QString>

#include "report_engine/calibration.h"

// Each printer's calibration, kept by printer name in the user's settings. A printer never
// calibrated prints unchanged.
namespace shell {

report_engine::Calibration printerCalibration(const QString& printerName);

// False when the settings could not be written; a calibration that is not plausible is refused
// the same way and nothing is stored.
bool storePrinterCalibration(const QString& printerName,
                             const report_engine::Calibration& calibration);

// What a cover sent to this output is drawn through: the printer's calibration, or none when it
// goes into a file (a PDF stays exact).
report_engine::Calibration coverCalibration(const QString& printerName, bool toFile);

// The calibration in words: "Covers are moved 1.5 mm right and 1.0 mm up and printed at 99.4 %
// across and 100.0 % down." or that they print unchanged.
QString calibrationSentence(const report_engine::Calibration& calibration);

}  // namespace shell
