#pragma once

#include <QTransform>

// A printer's correction: printers shift and scale the page by a millimetre or two, so that a
// cover's cut lines miss. Drawn through a calibration, a point at x on the page lands at
// offsetX + x × scaleX on the paper (likewise for y), which undoes the printer's error.
namespace report_engine {

struct Calibration {
    double offsetXMm = 0;
    double offsetYMm = 0;
    double scaleXPercent = 100;
    double scaleYPercent = 100;

    bool isIdentity() const { return *this == Calibration{}; }
    bool operator==(const Calibration&) const = default;
};

// The calibration as a transform of page twips.
QTransform calibrationTransform(const Calibration& calibration);

// What a ruler shows on the test page printed without a calibration: the distances of the
// frame's left and top lines from the paper's edges, and the frame's width and height, in mm.
struct FrameMeasurement {
    double leftMm = 0;
    double topMm = 0;
    double widthMm = 0;
    double heightMm = 0;
};

// The test page's frame as it is drawn (and as a true printer prints it).
FrameMeasurement nominalTestFrame();

// The calibration that brings a printer that printed the test frame as measured to the nominal
// frame; and back, the measurement a calibration was made from. Sizes must be positive.
Calibration calibrationFromMeasurement(const FrameMeasurement& measured);
FrameMeasurement measurementOfCalibration(const Calibration& calibration);

// The values a calibration may take: larger ones are typing errors, not printers.
inline constexpr double kMaxOffsetMm = 50;
inline constexpr double kMinScalePercent = 50;
inline constexpr double kMaxScalePercent = 200;
bool isPlausibleOffset(double mm);
bool isPlausibleScale(double percent);
bool isPlausible(const Calibration& calibration);  // both offsets and both scales

}  // namespace report_engine
