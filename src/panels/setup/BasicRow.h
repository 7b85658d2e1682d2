#pragma once

#include "settings/Prefs.h"

#include <QWidget>

namespace velmo {

/// A switch of the panel's upper part with a line above it, and what belongs to it while it is on. It stands only in
/// the modes for which it is meant. Main thread.
class BasicRow final : public QWidget {
    Q_OBJECT
public:
    struct Words {
        QString text;
        QString hint;
    };

    /// `prefs` is borrowed. `details` may be null; owned.
    BasicRow(Prefs& prefs, Setting<bool>& setting, const Words& words, bool (*belongsTo)(RecordMode),
             QWidget* details = nullptr, QWidget* parent = nullptr);
};

} // namespace velmo
