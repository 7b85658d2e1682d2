#pragma once

#include "Easel.h"

namespace velmo::SetupStates {

/// The panel in which a recording is prepared, in all its states.
void showAll(const Easel& easel);

} // namespace velmo::SetupStates
