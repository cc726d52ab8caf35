#pragma once

#include <QString>

namespace testsupport {

// The number of compilations of the file whose stored SumTrack or SumTime (Null lengths
// counting 0) disagree with their tracks, or whose tracks are not numbered 1 to SumTrack.
int brokenCompilations(const QString& path);

}  // namespace testsupport
