#pragma once

#include <QStringList>
#include <vector>

#include "medium/medium_fit.h"

namespace shell {

// How the tracks fit the medium as it is recorded, a line each, for the compilation's format:
// an MD's modes and the least one it needs, a cassette's sides, an audio CD (CD-R, CD-RW) on
// 74 and 80 minute discs. No lines for other formats, which have only the capacity rule.
QStringList mediumFitLines(const QString& format, int lengthMinutes,
                           const std::vector<medium::Track>& tracks);

}  // namespace shell
