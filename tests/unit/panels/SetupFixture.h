#pragma once

#include "panels/SetupPanel.h"
#include "settings/SettingsProfiles.h"
#include "support/FakeMicrophoneLevel.h"
#include "unit/session/World.h"

#include <memory>
#include <utility>
#include <vector>

namespace velmo::test {

class TwoMicrophones final : public AudioInputService {
public:
    std::vector<AudioDevice> microphones() const override { return list; }
    std::optional<AudioDevice> defaultMicrophone() const override {
        return list.empty() ? std::nullopt : std::optional(list.front());
    }
    Result<std::unique_ptr<AudioInput>> openMicrophone(const std::string&, SerialQueue&, Handler) override {
        return Error{};
    }
    Result<std::unique_ptr<AudioInput>> openSystemAudio(SerialQueue&, Handler) override { return Error{}; }

    std::vector<AudioDevice> list{{"a", "Interno"}, {"b", "USB"}};
};

/// A setup panel with two cameras, two microphones and two screens around it. The mode is `screen`.
class SetupWorld : public World {
protected:
    SetupWorld() { screens.screens = {{1, {0, 0, 1440, 900}, 2}, {2, {1440, 0, 1920, 1080}, 1}}; }

    std::unique_ptr<SetupPanel> make(std::vector<SetupSection> material = {}) {
        return std::make_unique<SetupPanel>(
            SetupContext{*controller, prefs, real, screens, microphone, profiles, timers, [this] { ++templatesShown; }},
            std::move(material));
    }
    /// By what is read on it, else by what assistive technology calls it.
    template <typename T>
    static T* named(const QWidget& panel, const char* name) {
        for (T* each : panel.findChildren<T*>()) {
            if constexpr (requires { each->text(); }) {
                if (each->text() == QString::fromUtf8(name)) {
                    return each;
                }
            }
            if (each->accessibleName() == QString::fromUtf8(name)) {
                return each;
            }
        }
        return nullptr;
    }

    TwoMicrophones inputs;
    Devices real{&cameras, &inputs};
    FakeMicrophoneLevel microphone;
    SettingsProfiles profiles{store, [this] { prefs.reload(); }};
    int templatesShown = 0;
};

} // namespace velmo::test
