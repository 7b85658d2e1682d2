#pragma once

#include "session/Collaborators.h"
#include "surfaces/BubbleServices.h"
#include "surfaces/internal/CameraBubble.h"

#include <QMenu>
#include <QObject>

#include <memory>
#include <optional>

namespace velmo {

/// The second camera's bubble: dressed like the first, with size, shape, mirror and place of its own; without name and
/// controls. Its ring does not hear the voice. Main thread.
class SecondBubbleController final : public QObject, public SecondBubblePort {
    Q_OBJECT
public:
    explicit SecondBubbleController(BubbleServices services);
    ~SecondBubbleController() override;

    void show() override;
    void hide() override;
    void toggleUserVisibility() override;
    bool userHidden() const override { return userHidden_; }
    bool visible() const { return visible_; }
    void applyPrefs();
    void bringToFront() { bubble_.view().bringToFront(); }
    void keep(const Screen& screen) override { bubble_.keep(screen); }

    std::optional<WindowId> windowID() const override { return bubble_.windowID(); }
    std::optional<BubbleInfo> captureInfo() const override;
    /// The displays have changed.
    void reconnect() { bubble_.reconnect(); }

    std::unique_ptr<QMenu> makeMenu();
    BubbleView& view() { return bubble_.view(); }

signals:
    void visibleChanged(bool visible);
    void userHiddenChanged(bool hidden);

private:
    void set(bool visible, bool userHidden);
    void putAway();

    BubbleServices services_;
    CameraBubble bubble_;
    bool visible_ = false;
    bool userHidden_ = false;
};

} // namespace velmo
