#include "shell/printer_calibrations.h"

#include "platform/user_settings.h"

namespace shell {

namespace {

struct Key {
    const char* name;
    double report_engine::Calibration::*value;
};

const Key kKeys[] = {{"OffsetXMm", &report_engine::Calibration::offsetXMm},
                     {"OffsetYMm", &report_engine::Calibration::offsetYMm},
                     {"ScaleXPercent", &report_engine::Calibration::scaleXPercent},
                     {"ScaleYPercent", &report_engine::Calibration::scaleYPercent}};

QString groupOf(const QString& printerName) {
    return QStringLiteral("PrinterCalibration/") + platform::settingsKeyOf(printerName);
}

QString millimetres(double mm) {
    return QString::number(qAbs(mm), 'f', 1) + QStringLiteral(" mm");
}

}  // namespace

report_engine::Calibration printerCalibration(const QString& printerName) {
    QSettings settings = platform::userSettings();
    settings.beginGroup(groupOf(printerName));
    report_engine::Calibration calibration;
    for (const Key& key : kKeys) {
        bool number = false;
        const double value = settings.value(QLatin1String(key.name)).toDouble(&number);
        if (number) {
            calibration.*key.value = value;
        }
    }
    // A settings file edited by hand into nonsense must not throw covers off the paper.
    return report_engine::isPlausible(calibration) ? calibration : report_engine::Calibration{};
}

bool storePrinterCalibration(const QString& printerName,
                             const report_engine::Calibration& calibration) {
    if (!report_engine::isPlausible(calibration)) {
        return false;
    }
    QSettings settings = platform::userSettings();
    settings.beginGroup(groupOf(printerName));
    for (const Key& key : kKeys) {
        settings.setValue(QLatin1String(key.name), calibration.*key.value);
    }
    settings.endGroup();
    return platform::storeSettings(settings);
}

report_engine::Calibration coverCalibration(const QString& printerName, bool toFile) {
    return toFile ? report_engine::Calibration{} : printerCalibration(printerName);
}

QString calibrationSentence(const report_engine::Calibration& calibration) {
    if (calibration.isIdentity()) {
        return QStringLiteral("Covers print unchanged on this printer.");
    }
    QStringList moves;
    if (calibration.offsetXMm != 0) {
        moves << millimetres(calibration.offsetXMm) + (calibration.offsetXMm < 0
                                                           ? QStringLiteral(" left")
                                                           : QStringLiteral(" right"));
    }
    if (calibration.offsetYMm != 0) {
        moves << millimetres(calibration.offsetYMm) +
                     (calibration.offsetYMm < 0 ? QStringLiteral(" up") : QStringLiteral(" down"));
    }
    const QString scale = QStringLiteral("printed at %1 % across and %2 % down")
                              .arg(QString::number(calibration.scaleXPercent, 'f', 1),
                                   QString::number(calibration.scaleYPercent, 'f', 1));
    return QStringLiteral("Covers are ") +
           (moves.isEmpty() ? QString()
                            : QStringLiteral("moved ") + moves.join(QStringLiteral(" and ")) +
                                  QStringLiteral(" and ")) +
           scale + QLatin1Char('.');
}

}  // namespace shell
