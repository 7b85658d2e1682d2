#pragma once

#include "Easel.h"

namespace velmo::WelcomeStates {

/// The window of the first run, for everything that can be found out.
void showAll(const Easel& easel);

} // namespace velmo::WelcomeStates
