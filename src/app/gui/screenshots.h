#pragma once

#include <QString>

class QWidget;

namespace app {

// Shows the widget and writes its picture as folder/name.png, saying so on stdout.
bool savePicture(QWidget* widget, const QString& folder, const QString& name);

// Writes a PNG of each window in typical states into folder; returns the exit code.
int writeScreenshots(const QString& folder);

}  // namespace app
