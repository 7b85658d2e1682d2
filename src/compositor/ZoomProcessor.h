#pragma once

#include "base/Clock.h"
#include "base/Color.h"
#include "base/Geometry.h"
#include "compositor/BubbleInfo.h"
#include "compositor/NameTagText.h"
#include "compositor/ZoomControls.h"
#include "compositor/ZoomMotion.h"
#include "compositor/internal/SerialUse.h"
#include "media/PixelBuffer.h"
#include "media/Sample.h"

#include <atomic>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace velmo {

namespace internal {
class FrameRenderer;
struct Column;
struct LiveBubble;
struct PointerFigure;
} // namespace internal

/// Turns each captured screen frame into the frame that goes into the file.
///
/// Threads: the setters, `update`, `isPaused`, `isEnabled` and `scale` from any thread; everything else on the one
/// video queue, in the order `stepTo`, `needsProcessing` (captured frames only), `render`. The lock guards copies of
/// the control fields and nothing longer; frames and lists that a setter replaces are destroyed after it.
///
/// Positions are in normalised screen space (0 to 1, y up) unless a name says global points (y up as well).
/// Nothing here fails aloud: what cannot be drawn is left out, and a frame that cannot be made is absent.
class ZoomProcessor {
public:
    using NameTagText = velmo::NameTagText;

    /// Bubbles that a frame shows at most.
    static constexpr std::size_t kMostBubbles = 16;

    using PoolMaker = std::unique_ptr<PixelBufferPool> (*)(PixelFormat format, int width, int height, int minimumCount);

    /// `clock` is borrowed and is the clock of `showBubble`. `makePool` makes the output pool.
    explicit ZoomProcessor(const Clock& clock = HostClock::shared(), PoolMaker makePool = &PixelBufferPool::create);
    ~ZoomProcessor();
    ZoomProcessor(const ZoomProcessor&) = delete;
    ZoomProcessor& operator=(const ZoomProcessor&) = delete;

    // Any thread. No setter moves anything: motion happens in `stepTo` only.

    /// The captured screen in global points.
    void configure(Rect screenFrame);
    /// Switching on holds the present pointer as `anchor`.
    void setEnabled(bool enabled);
    /// Clamped to 1.05 to 6.
    void setLevel(double level);
    /// Switching off holds the present pointer as `anchor`.
    void setFollow(bool follow);
    /// Zooms to `center` and holds it there. Leaves the region alone.
    void focus(Point center, double level);
    /// Normalised; stored untouched. Its width alone gives the factor, at most 20.
    void setRegion(std::optional<Rect> region);
    void setSpotlight(bool on);
    void setColumn(bool on, bool left);
    /// The camera of the column, in the format of the screen's pictures. Without one, or in another format, a flat
    /// colour stands for it.
    void setCameraFrame(FrameRef frame);
    void setPaused(bool paused);
    void setNameTag(std::optional<NameTagText> tag);
    /// The latest picture of an overlay stream: premultiplied BGRA. An entry is replaced, never removed.
    void setOverlay(int key, FrameRef frame);
    /// `at` is a time of the clock in seconds. Replaces a running bubble.
    void showBubble(double at, std::vector<Color> colors);
    /// `mouse` in global points. Of more than `kMostBubbles` the rest is left out of the frame. With an empty screen
    /// frame the pointer stays where it was.
    void update(Point mouse, std::vector<BubbleInfo> bubbles);

    bool isPaused() const;
    bool isEnabled() const;
    /// The present zoom factor: any thread, never waits.
    double scale() const { return scale_.load(std::memory_order_relaxed); }
    /// A copy of what the setters have asked for.
    ZoomControls controls() const;

    // Video queue.

    void setScale(double scale);
    /// Advances all motion to `seconds` of the host clock.
    void stepTo(double seconds);
    /// The gate in front of `render` for captured frames: false means that the sample goes to the writer untouched.
    bool needsProcessing() const;
    /// A frame is worth making although the screen sends none.
    bool isAnimating() const;
    /// A new sample with every live effect burnt in, of the format, size and colour tags of `source`; absent when no
    /// effect is live or a buffer cannot be had. Presentation and duration as given, no decode time.
    ///
    /// The law of sampling. At factor s = max(`scale`, 1) and centre c, unit (i, j) of an output plane of w x h units
    /// (j counted from the bottom, chroma planes in their own units) shows the source plane at
    ///     x = w * (c.x + ((i + 0.5) / w - 0.5) / s) - 0.5,   y = h * (c.y + ((j + 0.5) / h - 0.5) / s) - 0.5
    /// where whole numbers are the middles of units: each component is blended bilinearly from the four units around
    /// (x, y), coordinates outside the plane take its edge, and the result is rounded to the nearest code value.
    ///
    /// The law of effects. A place p of the screen lies in the frame at ((p - c) * s + 0.5) of its size. Round the
    /// spot, what a unit is above black (chroma: away from grey) is multiplied by (m + (1 - m) * (1 - 0.78 a))^(1
    /// / 2.2), where a is the opacity and m falls evenly from 1 at 0.17 of the frame's height to 0 at 1.45 times that;
    /// distances are from the middle of the unit. The pointer bubble is drawn with its middle at its place, to a
    /// fraction of a pixel, and laid over, code value by code value; a chroma unit takes the mean of the four pixels
    /// that it covers.
    ///
    /// The law of bubbles. A point of the screen is as many pixels as the frame is wide for each point of the screen's
    /// width, on both axes, whatever the zoom. In the order of the list, a window with a picture has it scaled into its
    /// rectangle, bilinear, and laid over with its own alpha; a pixel that the rectangle covers in part has it in that
    /// part. A bubble without a picture shows the unzoomed screen in its shape, the whole pixels around it, and a label
    /// likewise as a pill; nothing of at most 4 pixels.
    ///
    /// The law of the column. It is a fifth of the frame, and slides in from its side by e = t * t * (3 - 2t). The
    /// picture, bubbles and all, shrinks to 1 - width / W * e beside it, over a dark ground; the camera fills it. The
    /// name tag stands in its middle, at whole pixels.
    std::optional<Sample> render(const FrameRef& source, MediaTime time, MediaTime duration);

    /// A sample of an untouched picture. Absent without one. Any thread.
    static std::optional<Sample> sample(const FrameRef& from, MediaTime time, MediaTime duration);

    const ZoomMotion& motion() const { return motion_; }

private:
    struct Overlay {
        int key = 0;
        FrameRef frame;
    };

    std::optional<internal::PointerFigure> livePointerFigure() const;
    std::optional<internal::Column> liveColumn() const;
    Rect copyBubbles();
    bool hasOverlays() const;
    bool pictureIsChanged() const;

    const Clock& clock_;

    mutable std::mutex lock_;
    // protected by lock_
    ZoomControls controls_;
    Rect screenFrame_{0, 0, 1, 1};
    std::vector<BubbleInfo> bubbles_;
    std::optional<double> bubbleStart_;
    std::shared_ptr<const std::vector<Color>> bubbleColors_;
    bool columnLeft_ = true;
    FrameRef cameraFrame_;
    std::shared_ptr<const NameTagText> nameTag_;
    std::vector<Overlay> overlays_;
    bool paused_ = false;

    // video queue
    mutable internal::SerialUse videoQueue_;
    ZoomMotion motion_;
    std::unique_ptr<internal::FrameRenderer> renderer_;
    std::vector<internal::LiveBubble> shownBubbles_; // room for `kMostBubbles`; holds pictures for one frame only

    std::atomic<double> scale_{1.0}; // motion_'s, for readers elsewhere
};

} // namespace velmo
