#pragma once

#include "settings/Prefs.h"

#include <QObject>

namespace velmo {

/// Calls `follow` whenever the user chooses another modifier of the keys, as long as `context` lives. Main thread.
template <typename Follow>
void whenModifierChanges(const Prefs& prefs, QObject& context, Follow follow) {
    QObject::connect(&prefs, &Prefs::changed, &context, [&prefs, follow](const QString& key) {
        if (key == prefs.shortcutModifier.key()) {
            follow();
        }
    });
}

/// Keeps the texts of `widget` at the modifier that the user has chosen. Main thread.
template <typename Widget>
void followModifier(const Prefs& prefs, Widget& widget) {
    const auto follow = [&prefs, &widget] { widget.setShortcutModifier(prefs.shortcutModifier); };
    whenModifierChanges(prefs, widget, follow);
    follow();
}

} // namespace velmo
