#pragma once

#include "base/Clock.h"
#include "platform/PointerMotion.h"
#include "session/Collaborators.h"
#include "session/MainTimers.h"
#include "surfaces/CircleGesture.h"
#include "surfaces/PointerFXView.h"

#include <functional>
#include <memory>
#include <vector>

namespace velmo {

/// Shows on the screen what the video shows round the pointer: the spotlight, and the bubble after a circle drawn in
/// the air, for which it watches the mouse. Stays out of the video, as all windows of the program. Main thread.
///
/// Between `start` and `stop` it looks at the mouse 60 times a second; only five times while nothing is to be seen and
/// the mouse rests, with `PointerMotion` to wake it at once; and not at all without spotlight and bubbles.
class SpotlightOverlay final : public SpotlightPort {
public:
    /// All borrowed; all outlive the overlay.
    struct Services {
        const Clock& clock; ///< of the bubble's age: the one that the video's bubble runs on
        MainTimers& timers;
        const PointerPort& pointer;
        PointerMotion& motion;
        std::function<std::vector<Color>()> paletteColors; ///< asked at each start
    };
    explicit SpotlightOverlay(Services services);
    ~SpotlightOverlay() override;
    SpotlightOverlay(const SpotlightOverlay&) = delete;
    SpotlightOverlay& operator=(const SpotlightOverlay&) = delete;

    void prepare(const Screen& screen) override;
    void park() override;
    /// `bubbles`: circles are watched for.
    void start(const Screen& screen, bool bubbles) override;
    /// Also takes the spotlight back.
    void stop() override;
    void setSpotlight(bool on) override;
    void setOnCircle(std::function<void(double)> circle) override { onCircle_ = std::move(circle); }

    bool isTicking() const { return ticking_; }
    /// Null before the first `prepare` or `start`.
    const PointerFXView* view() const { return view_.get(); }

private:
    void show(const Screen& screen);
    Point mouse() const;
    void resume();
    void rest();
    void tick();
    void wake();
    void restIfNothingMoves(bool live, Point at);

    Services services_;
    std::unique_ptr<PointerFXView> view_;
    std::unique_ptr<MainTimer> timer_;
    std::unique_ptr<MainTimer> lookout_; // runs while the mouse rests
    CircleGesture gesture_;
    Point origin_; // of the screen, in global points
    Point lastMouse_;
    int stillTicks_ = 0;
    bool active_ = false;
    bool ticking_ = false;
    bool spotlight_ = false;
    bool bubbles_ = false;
    std::function<void(double)> onCircle_;
};

} // namespace velmo
