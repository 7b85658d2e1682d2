#pragma once

#include "Calls.h"
#include "session/MainThreadResult.h"
#include "session/SessionServices.h"

#include <utility>

namespace velmo::test {

/// A fake that notes what it is told under its name.
struct Noted {
    Noted(Calls& log, std::string itsName) : calls(log), name(std::move(itsName)) {}
    void note(const std::string& what) const { calls.push_back(name + "." + what); }
    Calls& calls;
    std::string name;
};

struct FakeSetupPanel final : SetupPanelPort, Noted {
    using Noted::Noted;
    void show() override { note("show"); }
    void hide() override { note("hide"); }
};

struct FakeControlBar final : ControlBarPort, Noted {
    using Noted::Noted;
    void show(const Screen&) override { note("show"); }
    void hide() override { note("hide"); }
};

struct FakeLibraryWindow final : LibraryWindowPort, Noted {
    using Noted::Noted;
    void show(std::optional<std::filesystem::path> focus) override {
        note("show " + (focus ? focus->string() : "none"));
    }
    void hide() override { note("hide"); }
};

/// Ends at once, or when the test says so.
struct FakeCountdown final : CountdownPort, Noted {
    using Noted::Noted;
    QCoro::Task<void> run(Screen) override {
        note("run");
        if (isHeld) {
            MainThreadResult<Done> over{Done{}};
            held = over.callback();
            co_await over;
        }
    }
    bool isHeld = false;
    std::function<void(Done)> held;
};

struct FakeCamera final : CameraPort, Noted {
    using Noted::Noted;
    QCoro::Task<void> configure(std::optional<std::string> camera, std::optional<std::string> microphone) override {
        note("configure " + camera.value_or("none") + " " + microphone.value_or("none"));
        if (isHeld) {
            MainThreadResult<Done> over{Done{}};
            held = over.callback();
            co_await over;
        }
    }
    void stop() override { note("stop"); }
    bool hasVideo() const override { return video; }
    double level() const override { return loudness; }
    void startFrames(bool mirrored, std::function<void(FrameRef)> onFrame) override {
        note(mirrored ? "startFrames mirrored" : "startFrames");
        frames = std::move(onFrame);
    }
    void stopFrames() override {
        note("stopFrames");
        frames = {};
    }
    std::function<void(FrameRef)> frames;
    bool video = true;
    double loudness = 1;
    bool isHeld = false;
    std::function<void(Done)> held;
};

struct FakeSecondCamera final : SecondCameraPort, Noted {
    using Noted::Noted;
    QCoro::Task<void> configure(std::optional<std::string> camera) override {
        note("configure " + camera.value_or("none"));
        co_return;
    }
    void stop() override { note("stop"); }
};

struct FakeBubble final : BubblePort, Noted {
    using Noted::Noted;
    void show() override { note("show"); }
    void hide() override { note("hide"); }
    void keep(const Screen&) override { note("keep"); }
    void enterCameraOnly(const Screen&) override { note("enterCameraOnly"); }
    void exitCameraOnly() override { note("exitCameraOnly"); }
    void prepareControlsForCapture() override { note("prepareControlsForCapture"); }
    void parkControls() override { note("parkControls"); }
    bool userHidden() const override { return hidden; }
    void toggleUserVisibility() override {
        note("toggleUserVisibility");
        hidden = !hidden;
    }
    void setCoveredByColumn(bool covered) override {
        note(covered ? "setCoveredByColumn true" : "setCoveredByColumn false");
        underColumn = covered;
    }
    bool underColumn = false;
    bool hidden = false;
    std::optional<WindowId> windowID() const override { return 10; }
    std::optional<BubbleInfo> captureInfo() const override { return info; }
    std::optional<BubbleInfo> info;
};

struct FakeSecondBubble final : SecondBubblePort, Noted {
    using Noted::Noted;
    void show() override { note("show"); }
    void hide() override { note("hide"); }
    void keep(const Screen&) override { note("keep"); }
    bool userHidden() const override { return hidden; }
    void toggleUserVisibility() override { note("toggleUserVisibility"); }
    std::optional<WindowId> windowID() const override { return 11; }
    std::optional<BubbleInfo> captureInfo() const override { return info; }
    bool hidden = false;
    std::optional<BubbleInfo> info;
};

struct FakePhone final : PhonePort, Noted {
    using Noted::Noted;
    void show() override { note("show"); }
    void hide() override { note("hide"); }
    void keep(const Screen&) override { note("keep"); }
    void prepareForCapture() override { note("prepareForCapture"); }
    void park() override { note("park"); }
    std::optional<WindowId> windowID() const override { return 12; }
    std::optional<BubbleInfo> captureInfo() const override { return info; }
    std::optional<BubbleInfo> info;
};

struct FakeDrawing final : DrawingPort, Noted {
    using Noted::Noted;
    void prepare(const Screen&) override { note("prepare"); }
    void parkPrepared() override { note("parkPrepared"); }
    void toggle() override { note("toggle"); }
    void teardown() override { note("teardown"); }
    std::optional<WindowId> overlayWindowID() const override { return 13; }
};

struct FakeBoard final : BoardPort, Noted {
    using Noted::Noted;
    bool isAvailable() const override { return available; }
    void ensureServer() override { note("ensureServer"); }
    void prepare(const Screen&) override { note("prepare"); }
    void park() override { note("park"); }
    void endRecording() override { note("endRecording"); }
    bool shown() const override { return isShown; }
    void show() override { note("show"); }
    void toggle() override { note("toggle"); }
    std::optional<WindowId> windowID() const override { return 14; }
    bool available = true;
    bool isShown = false;
};

struct FakeSpotlight final : SpotlightPort, Noted {
    using Noted::Noted;
    void prepare(const Screen&) override { note("prepare"); }
    void park() override { note("park"); }
    void start(const Screen&, bool bubbles) override { note(bubbles ? "start bubbles" : "start"); }
    void stop() override { note("stop"); }
    void setSpotlight(bool on) override { note(on ? "setSpotlight true" : "setSpotlight false"); }
    void setOnCircle(std::function<void(double)> closed) override {
        note("setOnCircle");
        circle = std::move(closed);
    }
    std::function<void(double)> circle;
};

struct FakePresenter final : PresenterPort, Noted {
    using Noted::Noted;
    void prepare(const Screen&) override { note("prepare"); }
    void park() override { note("park"); }
    void reset() override { note("reset"); }
    bool isFull() const override { return full; }
    void enter(const Screen&, PresenterStyle wanted) override {
        if (full || busy) {
            note("enter dropped");
            return;
        }
        note("enter " + std::string(rowOf(wanted).raw));
        full = true;
        style = wanted;
        busy = flies;
    }
    void exit(std::function<void()> then) override {
        if (!full || busy) {
            note("exit dropped");
            call(then);
            return;
        }
        note("exit");
        full = false;
        busy = flies;
        gone = std::move(then);
        if (!flies) {
            call(std::exchange(gone, {}));
        }
    }
    void setOnSettled(std::function<void()> callback) override { settled = std::move(callback); }
    /// The end of a flight.
    void land() {
        busy = false;
        call(std::exchange(gone, {}));
        call(settled);
    }
    static void call(const std::function<void()>& callback) {
        if (callback) {
            callback();
        }
    }
    PresenterStyle style{};
    bool flies = false; ///< flights take until `land`
    bool busy = false;
    std::function<void()> gone;
    std::function<void()> settled;
    std::optional<WindowId> windowID() const override { return 15; }
    bool full = false;
};

struct FakeKitPanel final : KitPanelPort, Noted {
    using Noted::Noted;
    void show() override { note("show"); }
    void hide() override { note("hide"); }
    void toggle() override { note("toggle"); }
};

struct FakeClassKit final : ClassMaterial, Noted {
    using Noted::Noted;
    std::vector<KitItem> items() const override { return list; }
    bool copyFiles() const override { return copies; }
    void writeFolder(std::filesystem::path video, std::vector<KitItem> items, std::vector<Chapter> chapters, bool copy,
                     std::function<void()> done) override {
        note("writeFolder " + video.string() + (copy ? " copies" : ""));
        writtenItems = std::move(items);
        writtenChapters = std::move(chapters);
        if (isHeld) {
            held = std::move(done);
        } else {
            done();
        }
    }
    std::vector<KitItem> list;
    bool copies = true;
    bool isHeld = false;
    std::function<void()> held;
    std::vector<KitItem> writtenItems;
    std::vector<Chapter> writtenChapters;
};

struct FakeTeleprompter final : TeleprompterPort, Noted {
    using Noted::Noted;
    bool hasScript() const override { return script; }
    bool visible() const override { return isVisible; }
    void togglePlay() override { note("togglePlay"); }
    void show(const Screen&) override { note("show"); }
    void hide() override { note("hide"); }
    bool script = false;
    bool isVisible = false;
};

struct FakeRegionPicker final : RegionPickerPort, Noted {
    using Noted::Noted;
    void pick(const Screen&, std::optional<Rect>, QString prompt,
              std::function<void(std::optional<Rect>)> completion) override {
        note("pick " + prompt.toStdString());
        if (isHeld) {
            held = std::move(completion);
        } else {
            completion(answer);
        }
    }
    void cancel() override {
        if (const auto open = std::exchange(held, {})) {
            note("cancel");
            open(std::nullopt);
        }
    }
    std::optional<Rect> answer;
    bool isHeld = false;
    std::function<void(std::optional<Rect>)> held;
};

struct FakePointer final : PointerPort {
    Point location() const override { return place; }
    std::optional<WindowId> ownWindow() const override { return window; }
    Point place;
    std::optional<WindowId> window;
};

} // namespace velmo::test
