#include "settings/NameTag.h"

#include "settings/Prefs.h"

namespace velmo::NameTag {

std::optional<Text> current(const Prefs& prefs) {
    Text text{prefs.presenterName.value().trimmed(), prefs.presenterRole.value().trimmed()};
    if (!prefs.showName || text.name.isEmpty()) {
        return std::nullopt;
    }
    return text;
}

} // namespace velmo::NameTag
