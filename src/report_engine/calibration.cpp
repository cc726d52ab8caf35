#include "report_engine/calibration.h"

#include <QtMath>

#include "report_engine/page_model.h"

namespace report_engine {

namespace {

constexpr double kTwipsPerMm = kTwipsPerInch / 25.4;

}  // namespace

QTransform calibrationTransform(const Calibration& calibration) {
    return QTransform(calibration.scaleXPercent / 100, 0, 0, calibration.scaleYPercent / 100,
                      calibration.offsetXMm * kTwipsPerMm, calibration.offsetYMm * kTwipsPerMm);
}

FrameMeasurement nominalTestFrame() {
    return {20, 20, 170, 250};
}

// The printer put a page point at x on the paper at a + s × x: the frame's left line (nominal L)
// at L' = a + s × L and its width W at W' = s × W. The calibration draws x at o + k × x so that
// the printer puts it back at x: k = 1 / s, o = -a / s = L - L' × W / W'.
Calibration calibrationFromMeasurement(const FrameMeasurement& measured) {
    const FrameMeasurement nominal = nominalTestFrame();
    const double scaleX = nominal.widthMm / measured.widthMm;
    const double scaleY = nominal.heightMm / measured.heightMm;
    return {nominal.leftMm - measured.leftMm * scaleX, nominal.topMm - measured.topMm * scaleY,
            scaleX * 100, scaleY * 100};
}

FrameMeasurement measurementOfCalibration(const Calibration& calibration) {
    const FrameMeasurement nominal = nominalTestFrame();
    const double scaleX = calibration.scaleXPercent / 100;
    const double scaleY = calibration.scaleYPercent / 100;
    return {(nominal.leftMm - calibration.offsetXMm) / scaleX,
            (nominal.topMm - calibration.offsetYMm) / scaleY, nominal.widthMm / scaleX,
            nominal.heightMm / scaleY};
}

// NaN is in no range: every comparison with it is false.
bool isPlausibleOffset(double mm) {
    return mm >= -kMaxOffsetMm && mm <= kMaxOffsetMm;
}

bool isPlausibleScale(double percent) {
    return percent >= kMinScalePercent && percent <= kMaxScalePercent;
}

bool isPlausible(const Calibration& calibration) {
    return isPlausibleOffset(calibration.offsetXMm) && isPlausibleOffset(calibration.offsetYMm) &&
           isPlausibleScale(calibration.scaleXPercent) &&
           isPlausibleScale(calibration.scaleYPercent);
}

}  // namespace report_engine
