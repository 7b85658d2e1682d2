#pragma once

#include "base/Clock.h"
#include "base/SerialQueue.h"
#include "platform/ScreenCapture.h"
#include "session/Collaborators.h"
#include "session/MainTimers.h"
#include "surfaces/PresenterFlight.h"
#include "surfaces/PresenterState.h"
#include "surfaces/PresenterTag.h"
#include "surfaces/PreviewLender.h"

#include <functional>
#include <memory>
#include <optional>

namespace velmo {

class CameraPreview;
class Prefs;
class PresenterBackdrop;
class PresenterPanel;

/// The scenes in which the teacher grows out of the bubble: the camera flies from the bubble's place to a large stage
/// and back, over the blurred desktop. A window over the whole display that is part of the recorded picture; it lets
/// the mouse through. Main thread.
///
/// What is asked during a flight is dropped (see `PresenterState`); `setOnSettled` tells when to ask again.
class PresenterWindow final : public PresenterPort {
public:
    /// All borrowed; all outlive the window.
    struct Services {
        const Prefs& prefs; ///< style and name
        PreviewLender& bubble;
        ScreenCaptureService& capture; ///< for the backdrop
        const Clock& clock;            ///< of the flights
        MainTimers& timers;
        std::unique_ptr<SerialQueue> queue;             ///< "velmo.presenter": blurs the backdrop
        std::function<std::optional<WindowId>()> board; ///< the whiteboard, which the backdrop shows
        int processID = 0;                              ///< whose windows it does not show
    };
    explicit PresenterWindow(Services services);
    ~PresenterWindow() override;
    PresenterWindow(const PresenterWindow&) = delete;
    PresenterWindow& operator=(const PresenterWindow&) = delete;

    void prepare(const Screen& screen) override;
    void park() override;
    /// At once, without a flight. Who waits for one that is under way is not called any more.
    void reset() override;
    bool isFull() const override { return state_.isFull(); }
    void enter(const Screen& screen, PresenterStyle style) override;
    /// In the style of the settings.
    void enter(const Screen& screen);
    void exit(std::function<void()> then) override;
    /// Exit from the stage, else entrance in the style of the settings.
    void toggle(const Screen& screen);
    void setOnSettled(std::function<void()> settled) override { onSettled_ = std::move(settled); }
    /// Absent before the first `prepare` or `enter`.
    std::optional<WindowId> windowID() const override;

    const PresenterState& state() const { return state_; }
    /// Null before the window is made.
    const PresenterPanel* panel() const { return panel_.get(); }

private:
    void make(const Screen& screen);
    double now() const;
    void startBackdrop();
    void awaitAppearance();
    void takeOff();
    void borrow();
    void giveBack();
    void fly(const PresenterFrame& to, PresenterFlight::Way way);
    void fade();
    void makeTag(const Rect& stage, double corner);
    void startTicking();
    void tick();
    bool stepFlight(double time);
    bool stepFade(double time);
    bool stepTag(double time);
    void landed();

    Services services_;
    PresenterState state_;
    std::unique_ptr<PresenterPanel> panel_;
    std::unique_ptr<PresenterBackdrop> backdrop_;
    Screen screen_;
    std::optional<PresenterFlight> flight_;
    std::optional<double> begun_; ///< when flight or fade began; absent until the window is seen
    bool fades_ = false;
    bool lent_ = false;
    int entrances_ = 0;
    std::optional<PresenterTag> tag_;
    std::function<void()> then_; ///< of the exit that is under way
    std::function<void()> onSettled_;
    std::unique_ptr<MainTimer> timer_;
    bool ticking_ = false;
    std::shared_ptr<const int> life_ = std::make_shared<const int>(0);
};

} // namespace velmo
