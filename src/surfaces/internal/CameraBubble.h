#pragma once

#include "compositor/BubbleInfo.h"
#include "platform/ScreenCapture.h"
#include "surfaces/BubbleServices.h"
#include "surfaces/internal/BubblePlace.h"

#include <functional>
#include <memory>
#include <optional>

namespace velmo {

/// In what the two bubbles differ, as far as both do it.
struct BubbleKind {
    Setting<BubbleSize> Prefs::*size;
    Setting<BubbleShape> Prefs::*shape;
    Setting<bool> Prefs::*mirror;
    const char* xKey; ///< of the saved place
    const char* yKey;
    BubblePlace::Home home;
    Size firstSize; ///< of the panel, until the settings are applied
    int key;        ///< in `BubbleInfo`
    const char* title;
};

/// A bubble's view with its place and size on the desktop, and how the settings dress it: all that the first and the
/// second bubble have in common. Rectangles in global points. Main thread.
class CameraBubble {
public:
    enum class Motion { none, animated };
    static constexpr double kMoveSeconds = 0.2;

    CameraBubble(const BubbleServices& services, const BubbleKind& kind);
    ~CameraBubble();
    CameraBubble(const CameraBubble&) = delete;
    CameraBubble& operator=(const CameraBubble&) = delete;

    BubbleView& view() { return view_; }
    const BubbleView& view() const { return view_; }
    const BubbleKind& kind() const { return kind_; }
    bool isVisible() const { return view_.isVisible(); }
    WindowId windowID() const { return static_cast<WindowId>(view_.winId()); }

    /// Shape, ring, mirror and name as the settings have them.
    void dress(std::optional<NameTag::Text> nameTag);
    /// The size of the settings, the middle kept and inside the screen.
    void applySize();
    /// Comes up where it last was, or at home.
    void appear();
    void disappear() { view_.hide(); }
    /// At home on `screen`, if it is visible and not there.
    void keep(const Screen& screen);
    /// The displays have changed: it stays within reach. The place that it is remembered by is kept, for the display
    /// may come back.
    void reconnect();

    /// Where the panel is, or is on its way to.
    const Rect& frame() const { return goal_; }
    void setFrame(const Rect& frame, Motion motion);
    ScreenArea areaOf(const Screen& screen) const;
    /// As it stands on the screen now, without a label.
    BubbleInfo info() const;

private:
    std::vector<ScreenArea> areas() const;
    Rect placeNow() const;
    std::optional<Point> savedPlace() const;
    void savePlace();
    void fly();
    void land();

    BubbleServices services_;
    const BubbleKind& kind_;
    BubbleView view_;
    Rect goal_;
    Rect start_; // of the flight
    double startTime_ = 0;
    bool flying_ = false;
    std::unique_ptr<MainTimer> flight_;
};

} // namespace velmo
