#pragma once

#include <unicode/utypes.h>

#include <QString>

#include "engine/jet_error.h"

namespace engine {

// Throws JetError when ICU reports a failure of `what`.
inline void checkIcu(UErrorCode status, const char* what) {
    if (U_FAILURE(status)) {
        throw JetError(jet::kGeneral,
                       QStringLiteral("Text cannot be compared: %1 failed (%2).")
                           .arg(QLatin1String(what), QLatin1String(u_errorName(status))));
    }
}

}  // namespace engine
