#pragma once

#include "panels/setup/SetupContext.h"
#include "panels/setup/SetupSection.h"

#include <vector>

namespace velmo {

/// The cards behind "Más opciones", from top to bottom. `material` is the section of other rooms that stands where
/// the class material does; it keeps Button::kRoom free at both sides for marks of the focus.
std::vector<SetupSection> setupCards(SetupContext& context, std::vector<SetupSection> material);

} // namespace velmo
