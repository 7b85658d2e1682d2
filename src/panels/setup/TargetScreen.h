#pragma once

#include "platform/Screens.h"
#include "settings/Prefs.h"

#include <optional>

/// The screen that a recording would take now.
namespace velmo::TargetScreen {

/// The chosen one, else the main one; absent when none is known.
std::optional<Screen> of(const Prefs& prefs, const Screens& screens);

} // namespace velmo::TargetScreen
