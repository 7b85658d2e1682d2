#pragma once

#include "settings/EnumTable.h"

#include <cstdint>

namespace velmo {

/// The key that all global keys are held with.
enum class ShortcutModifier { control, controlAlt, super };

template <>
struct EnumTable<ShortcutModifier> {
    struct Row {
        ShortcutModifier value;
        std::string_view raw;
        std::string_view title;
        std::string_view sign;        ///< what stands before the key in texts
        std::string_view explanation; ///< which key the sign means
        std::uint32_t mask;           ///< as `HotKeyService` takes it
    };
    static constexpr std::array<Row, 3> rows{{
        {ShortcutModifier::control, "control", "Control", "⌃",
         "⌃ es la tecla Control (abajo a la izquierda del teclado).", 4096},
        {ShortcutModifier::controlAlt, "controlAlt", "Control + Alt", "⌃⌥",
         "⌃ es la tecla Control y ⌥ la tecla Alt (abajo a la izquierda del teclado).", 4096 + 2048},
        {ShortcutModifier::super, "super", "Super", "Super\u00A0",
         "Super es la tecla con el logotipo del sistema (abajo a la izquierda del teclado).", 256},
    }};
    static_assert(rowsInOrder(rows));
};

/// `text`, written for the Control key, for `modifier`: "Pausar (⌃P)" reads "Pausar (Super P)".
inline QString shortcutText(const QString& text, ShortcutModifier modifier) {
    return QString(text).replace(u'⌃', QString::fromUtf8(rowOf(modifier).sign));
}

} // namespace velmo
