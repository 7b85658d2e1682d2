#include "panels/setup/TargetScreen.h"

#include <algorithm>

namespace velmo::TargetScreen {

std::optional<Screen> of(const Prefs& prefs, const Screens& screens) {
    const std::vector<Screen> all = screens.all();
    const auto chosen = std::find_if(
        all.begin(), all.end(), [&prefs](const Screen& screen) { return screen.displayID == prefs.displayID.value(); });
    if (chosen != all.end()) {
        return *chosen;
    }
    return all.empty() ? std::nullopt : std::optional(all.front());
}

} // namespace velmo::TargetScreen
