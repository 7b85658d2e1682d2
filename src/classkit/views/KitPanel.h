#pragma once

#include "platform/Screens.h"
#include "session/Collaborators.h"
#include "ui/FloatingPanel.h"

#include <optional>

class QVBoxLayout;

namespace velmo {

class ClassKit;
class FittingScrollArea;
class RecorderController;

/// The material of the class on the recorded screen, one row for each item. A click opens the item and leaves a
/// chapter; the panel stays, so that several can be opened. Main thread; made once. Never takes the focus.
class KitPanel final : public FloatingPanel, public KitPanelPort {
    Q_OBJECT
public:
    static constexpr int kWidth = 270;

    /// All borrowed.
    KitPanel(ClassKit& kit, RecorderController& recorder, const Screens& screens);
    ~KitPanel() override;

    /// At the right edge of the recorded screen, or, while it is seen there already, where the user has put it. A kit
    /// without items only says so.
    void show() override;
    void hide() override;
    void toggle() override;

    bool visible() const { return visible_; }

    /// Height of the card with room for that many items, up to a limit.
    static int heightFor(std::size_t items);

signals:
    void visibleChanged();

private:
    QWidget* makeHead();
    QWidget* makeRows();
    void fillRows();
    void place();
    void setVisibleNow(bool visible);
    std::optional<Screen> screen() const;

    ClassKit& kit_;
    RecorderController& recorder_;
    const Screens& screens_;
    FittingScrollArea* scroll_ = nullptr;
    QVBoxLayout* rows_ = nullptr;
    bool visible_ = false;
};

} // namespace velmo
