#include "surfaces/RegionPicker.h"

#include "surfaces/RegionSelection.h"
#include "surfaces/internal/PickerPanel.h"
#include "ui/ScreenPlace.h"

#include <utility>

namespace velmo {

void RegionPicker::Later::operator()(PickerPanel* panel) const {
    panel->view().disconnect(); // keys that are still on their way find nobody
    panel->close();
    panel->deleteLater();
}

RegionPicker::RegionPicker() = default;
RegionPicker::~RegionPicker() = default;

void RegionPicker::pick(const Screen& screen, std::optional<Rect> current, QString prompt,
                        std::function<void(std::optional<Rect>)> completion) {
    finish(std::nullopt);
    done_ = std::move(completion);
    const Size size = screen.frame.size();
    if (current) {
        current = RegionSelection::fromFractions(*current, size);
    }
    panel_.reset(new PickerPanel(ScreenPlace::frame(screen), std::move(prompt), current));
    const RegionView& view = panel_->view();
    QObject::connect(&view, &RegionView::accepted, panel_.get(),
                     [this, &view, size] { finish(RegionSelection::toFractions(*view.selection(), size)); });
    QObject::connect(&view, &RegionView::cancelled, panel_.get(), [this] { finish(std::nullopt); });
    panel_->open();
}

void RegionPicker::finish(std::optional<Rect> fractions) {
    if (!panel_) {
        return;
    }
    panel_.reset();
    const auto done = std::exchange(done_, {});
    if (done) {
        done(fractions);
    }
}

} // namespace velmo
