#pragma once

#include "settings/ShortcutModifier.h"

#include <QString>
#include <QStringList>

#include <array>
#include <cstdint>
#include <functional>
#include <set>

namespace velmo {

/// The table of keys that the user reads. Written for the user, not made from the registered keys.
class Shortcuts {
public:
    struct Row {
        const char* key; ///< for the Control key
        const char* description;
        std::uint32_t firstID = 0; ///< of the hot keys that it stands for; 0: none
        std::uint32_t lastID = 0;
    };
    static const std::array<Row, 15> list;

    /// What the table shows beside its rows.
    struct State {
        ShortcutModifier modifier = ShortcutModifier::control;
        std::set<std::uint32_t> taken = {}; ///< ids of keys that another program holds
    };

    static QString message();
    /// What stands above the table.
    static QString introduction(const State& state);
    /// The introduction, two line breaks, one line for each row: key, tab, description.
    static QString informativeText(const State& state);
    static QString button();
    /// Whether one of the row's keys is held by another program.
    static bool isTaken(const Row& row, const State& state);
    /// What is said of such a row.
    static QString takenNote();

    using Presenter =
        std::function<void(const QString& message, const QString& informative, const QStringList& buttons)>;
    /// Brings the application to the front and shows the table. Main thread.
    static void show(const State& state, const std::function<void()>& toFront, const Presenter& presenter);
};

} // namespace velmo
