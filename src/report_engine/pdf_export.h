#pragma once

#include <QString>

#include "report_engine/calibration.h"
#include "report_engine/page_model.h"

namespace report_engine {

// Writes the pages to a PDF file of the model's paper size, text as text. The file is written
// beside its destination and takes its place only when complete, so a failure leaves any earlier
// file as it was; a device or pipe is written to directly. Throws WriteError, naming the cause,
// when the file cannot be written (a read-only file or folder, a full disk). A calibration is for
// a PDF that a printer which does not print true is to print; a PDF to keep stays exact.
void exportPdf(const PageModel& model, const QString& path, const QString& title = {},
               const Calibration& calibration = {});

}  // namespace report_engine
