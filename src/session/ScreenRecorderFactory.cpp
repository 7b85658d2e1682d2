#include "session/ScreenRecorderFactory.h"

#include "capture/ScreenRecorder.h"

#include <utility>

namespace velmo {
namespace {

class ProcessorZoom final : public ZoomPort {
public:
    explicit ProcessorZoom(ZoomProcessor& zoom) : zoom_(zoom) {}

    void configure(Rect screenFrame) override { zoom_.configure(screenFrame); }
    void setEnabled(bool enabled) override { zoom_.setEnabled(enabled); }
    void setLevel(double level) override { zoom_.setLevel(level); }
    void setFollow(bool follow) override { zoom_.setFollow(follow); }
    void focus(Point center, double level) override { zoom_.focus(center, level); }
    void setRegion(std::optional<Rect> region) override { zoom_.setRegion(region); }
    void setSpotlight(bool on) override { zoom_.setSpotlight(on); }
    void setColumn(bool on, bool left) override { zoom_.setColumn(on, left); }
    void setCameraFrame(FrameRef frame) override { zoom_.setCameraFrame(std::move(frame)); }
    void setNameTag(std::optional<NameTag::Text> tag) override {
        using Text = ZoomProcessor::NameTagText;
        zoom_.setNameTag(tag ? std::optional(Text{tag->name.toStdString(), tag->role.toStdString()}) : std::nullopt);
    }
    void showBubble(double at, std::vector<Color> colors) override { zoom_.showBubble(at, std::move(colors)); }
    void update(Point mouse, std::vector<BubbleInfo> bubbles) override { zoom_.update(mouse, std::move(bubbles)); }

private:
    ZoomProcessor& zoom_;
};

class OwnedScreenRecorder final : public CaptureRecorder {
public:
    explicit OwnedScreenRecorder(const RecorderServices& services) : recorder_(services), zoom_(recorder_.zoom()) {}

    void setOnStop(std::function<void(std::optional<Error>)> stopped) override {
        recorder_.setOnStop(std::move(stopped));
    }
    void start(Request request, Completion completion) override {
        recorder_.start(request.filter, request.size, request.fps, request.systemAudio, std::move(request.microphoneID),
                        std::move(request.url), std::move(completion));
    }
    void addOverlay(int key, CaptureWindow window, Completion completion) override {
        recorder_.addOverlay(key, window, std::move(completion));
    }
    void resizeOverlay(int key, Size size) override { recorder_.resizeOverlay(key, size); }
    void setMutesClicks(bool mutes) override { recorder_.clicks().setEnabled(mutes); }
    std::function<void(double)> clickNoter() override {
        return [clicks = recorder_.sharedClicks()](double time) {
            if (const auto suppressor = clicks.lock()) {
                suppressor->note(time);
            }
        };
    }
    void noteMark(RecordingMark mark) override { recorder_.noteMark(std::move(mark)); }
    std::function<void(FrameRef)> cameraFrames() override {
        return [zoom = recorder_.sharedZoom()](FrameRef frame) {
            if (const auto processor = zoom.lock()) {
                processor->setCameraFrame(std::move(frame));
            }
        };
    }
    void pause() override { recorder_.pause(); }
    void resume() override { recorder_.resume(); }
    void stop(FileCompletion completion) override { recorder_.stop(std::move(completion)); }
    ZoomPort& zoom() override { return zoom_; }

private:
    ScreenRecorder recorder_;
    ProcessorZoom zoom_;
};

} // namespace

ScreenRecorderFactory::ScreenRecorderFactory(RecorderServices services) : services_(std::move(services)) {}

std::unique_ptr<CaptureRecorder> ScreenRecorderFactory::makeRecorder() {
    return std::make_unique<OwnedScreenRecorder>(services_);
}

} // namespace velmo
