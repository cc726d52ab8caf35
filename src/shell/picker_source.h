#pragma once

#include "shell/app_state.h"

namespace shell {

// Builds a new TempSource for the track picker. The filter and the sort stay in force for the
// whole run and apply to every new TempSource, with passedCount counting the rows that pass the
// filter; only a connect of another album database drops them, as they were made for the
// collection they were applied to.
void buildPickerSource(AppState& state);

}  // namespace shell
