#pragma once

#include "panels/setup/SetupCard.h"
#include "settings/RecordMode.h"

#include <functional>

class QWidget;

namespace velmo {

/// What one card of the setup panel holds, and when it stands there.
struct SetupSection {
    SetupCard::Head head;
    /// The panel owns what it gives.
    std::function<QWidget*()> make;
    /// Null stands for every mode.
    bool (*belongsTo)(RecordMode) = nullptr;

    bool standsIn(RecordMode mode) const { return belongsTo == nullptr || belongsTo(mode); }
};

} // namespace velmo
