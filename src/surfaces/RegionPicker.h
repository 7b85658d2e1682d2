#pragma once

#include "session/Collaborators.h"

#include <functional>
#include <memory>
#include <optional>

namespace velmo {

class PickerPanel;

/// A dim screen on which the user drags out a rectangle of the screen's own shape. Letting go of the mouse accepts it,
/// Enter accepts one that stands already, Escape leaves. Never in the video. Main thread.
class RegionPicker final : public RegionPickerPort {
public:
    RegionPicker();
    /// An open pick goes without a word.
    ~RegionPicker() override;
    RegionPicker(const RegionPicker&) = delete;
    RegionPicker& operator=(const RegionPicker&) = delete;

    /// A pick that is open ends with nothing first. `completion` may pick again.
    void pick(const Screen& screen, std::optional<Rect> current, QString prompt,
              std::function<void(std::optional<Rect>)> completion) override;
    void cancel() override { finish(std::nullopt); }

    /// Null while no pick is open.
    PickerPanel* panel() const { return panel_.get(); }

private:
    /// A panel ends within its own events.
    struct Later {
        void operator()(PickerPanel* panel) const;
    };
    void finish(std::optional<Rect> fractions);

    std::unique_ptr<PickerPanel, Later> panel_;
    std::function<void(std::optional<Rect>)> done_;
};

} // namespace velmo
