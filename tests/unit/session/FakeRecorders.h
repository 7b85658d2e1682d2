#pragma once

#include "Calls.h"
#include "session/CaptureRecorder.h"

#include <map>
#include <set>
#include <utility>

namespace velmo::test {

inline std::string text(const Rect& rect) {
    return std::to_string(int(rect.x * 100)) + "," + std::to_string(int(rect.y * 100)) + "," +
           std::to_string(int(rect.width * 100)) + "," + std::to_string(int(rect.height * 100));
}

inline std::string text(double value) {
    std::string digits = std::to_string(value);
    return digits.substr(0, digits.find('.') + 3);
}

struct FakeZoom final : ZoomPort {
    explicit FakeZoom(Calls& log) : calls(log) {}
    void configure(Rect) override { calls.push_back("zoom.configure"); }
    void setEnabled(bool on) override { calls.push_back(on ? "zoom.setEnabled true" : "zoom.setEnabled false"); }
    void setLevel(double level) override { calls.push_back("zoom.setLevel " + text(level)); }
    void setFollow(bool on) override { calls.push_back(on ? "zoom.setFollow true" : "zoom.setFollow false"); }
    void focus(Point center, double level) override {
        calls.push_back("zoom.focus " + text(center.x) + "," + text(center.y) + " " + text(level));
    }
    void setRegion(std::optional<Rect> region) override {
        calls.push_back("zoom.setRegion " + (region ? text(*region) : "none"));
    }
    void setSpotlight(bool on) override { calls.push_back(on ? "zoom.setSpotlight true" : "zoom.setSpotlight false"); }
    void setColumn(bool on, bool) override {
        calls.push_back(on ? "zoom.setColumn true" : "zoom.setColumn false");
        column = on;
    }
    void setCameraFrame(FrameRef) override { calls.push_back("zoom.setCameraFrame"); }
    void setNameTag(std::optional<NameTag::Text> tag) override {
        calls.push_back("zoom.setNameTag " + (tag ? (tag->name + "|" + tag->role).toStdString() : "none"));
    }
    void showBubble(double at, std::vector<Color> colors) override {
        calls.push_back("zoom.showBubble " + text(at) + " " + std::to_string(colors.size()));
    }
    void update(Point mouse, std::vector<BubbleInfo> bubbles) override {
        lastMouse = mouse;
        lastBubbles = std::move(bubbles);
        ++updates;
    }
    Calls& calls;
    bool column = false;
    Point lastMouse;
    std::vector<BubbleInfo> lastBubbles;
    int updates = 0;
};

/// What the recorders of a test do; outlives them.
struct RecorderScript {
    std::optional<Error> startError;
    std::optional<Error> stopError;
    std::map<int, Error> overlayErrors;
    bool startIsHeld = false; ///< the completion waits in `heldStart`
    bool stopIsHeld = false;
    CaptureRecorder::Completion heldStart;
    CaptureRecorder::FileCompletion heldStop;
    CaptureRecorder::Request request;
    std::vector<RecordingMark> marks;
    std::function<void(std::optional<Error>)> onStop; ///< of the newest recorder
    FakeZoom* zoom = nullptr;                         ///< of the newest recorder
    int alive = 0;
};

class FakeRecorder final : public CaptureRecorder {
public:
    FakeRecorder(Calls& calls, RecorderScript& script) : calls_(calls), script_(script), zoom_(calls) {
        ++script_.alive;
        script_.zoom = &zoom_;
    }
    ~FakeRecorder() override { --script_.alive; }

    void setOnStop(std::function<void(std::optional<Error>)> stopped) override { script_.onStop = std::move(stopped); }
    void start(Request request, Completion completion) override {
        calls_.push_back("recorder.start");
        url_ = request.url;
        script_.request = std::move(request);
        if (script_.startIsHeld) {
            script_.heldStart = std::move(completion);
        } else {
            completion(script_.startError ? Result<void>(*script_.startError) : Result<void>());
        }
    }
    void addOverlay(int key, CaptureWindow, Completion completion) override {
        calls_.push_back("recorder.addOverlay " + std::to_string(key));
        const auto error = script_.overlayErrors.find(key);
        completion(error == script_.overlayErrors.end() ? Result<void>() : Result<void>(error->second));
    }
    void resizeOverlay(int key, Size size) override {
        calls_.push_back("recorder.resizeOverlay " + std::to_string(key) + " " + text(size.width));
    }
    void setMutesClicks(bool mutes) override {
        calls_.push_back(mutes ? "recorder.setMutesClicks true" : "recorder.setMutesClicks false");
    }
    std::function<void(double)> clickNoter() override {
        return [this](double time) { calls_.push_back("recorder.noteClick " + text(time)); };
    }
    void noteMark(RecordingMark mark) override { script_.marks.push_back(std::move(mark)); }
    std::function<void(FrameRef)> cameraFrames() override {
        return [this](const FrameRef& frame) { zoom_.setCameraFrame(frame); };
    }
    void pause() override { calls_.push_back("recorder.pause"); }
    void resume() override { calls_.push_back("recorder.resume"); }
    void stop(FileCompletion completion) override {
        calls_.push_back("recorder.stop");
        if (script_.stopIsHeld) {
            script_.heldStop = std::move(completion);
        } else {
            completion(script_.stopError ? Result<std::filesystem::path>(*script_.stopError)
                                         : Result<std::filesystem::path>(url_));
        }
    }
    ZoomPort& zoom() override { return zoom_; }

private:
    Calls& calls_;
    RecorderScript& script_;
    FakeZoom zoom_;
    std::filesystem::path url_;
};

class FakeRecorders final : public CaptureRecorderFactory {
public:
    FakeRecorders(Calls& calls, RecorderScript& script) : calls_(calls), script_(script) {}
    std::unique_ptr<CaptureRecorder> makeRecorder() override { return std::make_unique<FakeRecorder>(calls_, script_); }

private:
    Calls& calls_;
    RecorderScript& script_;
};

} // namespace velmo::test
