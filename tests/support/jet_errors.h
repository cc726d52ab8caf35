#pragma once

#include <QString>
#include <functional>

namespace testsupport {

// The number of the engine error the action throws, 0 when it throws none; description, when
// given, receives the error's text.
int errorNumber(const std::function<void()>& action, QString* description = nullptr);

}  // namespace testsupport
