#pragma once

#include <QTransform>

#include "report_engine/calibration.h"
#include "report_engine/page_model.h"

class QPainter;
class QPaintDevice;

namespace report_engine {

// Twips to the device's pixels at a zoom (1 is true size): 1440 twips are one inch on the device.
QTransform twipsToDevice(const QPaintDevice& device, double zoom = 1.0);

// Draws a page with the painter's origin at the paper's top-left corner (a printer paints on the
// full page for this), on top of the painter's own transform (a preview may move the page).
// The same code draws the preview, the printed page and the PDF; a calibration moves and scales
// the page for a printer that does not print true.
void drawPage(QPainter& painter, const Page& page, double zoom = 1.0,
              const Calibration& calibration = {});

}  // namespace report_engine
