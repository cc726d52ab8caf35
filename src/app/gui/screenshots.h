#pragma once

#include <QString>

namespace app {

// Writes a PNG of each window in typical states into folder; returns the exit code.
int writeScreenshots(const QString& folder);

}  // namespace app
