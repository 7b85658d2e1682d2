#pragma once

#include "ui/Picker.h"

#include <QString>

#include <optional>
#include <vector>

namespace velmo::DevicePicker {

/// The setting's word for no device.
inline const QString kNone = QStringLiteral("none");

/// What a picker of devices shows: all of them, as the system tells them now, `none` for no device where it has a
/// word, and which of them the setting means. `chosen` is absent for no device.
template <typename Device>
void show(Picker& picker, const std::vector<Device>& devices, const std::optional<Device>& chosen,
          const QString& none) {
    std::vector<Picker::Choice> choices;
    for (const Device& device : devices) {
        choices.push_back({QString::fromStdString(device.uniqueID), QString::fromStdString(device.name)});
    }
    if (!none.isEmpty()) {
        choices.push_back({kNone, none});
    }
    picker.setChoices(std::move(choices), chosen ? QString::fromStdString(chosen->uniqueID) : kNone);
}

} // namespace velmo::DevicePicker
