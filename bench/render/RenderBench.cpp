// Milliseconds of processor time a frame of ZoomProcessor::render takes on one core: the zoom alone beside libswscale's
// bilinear scaler on the same crop, and the zoom under way with spotlight and pointer bubble, each frame at another
// place; then a lesson with everything live at once, and one with the camera in its column. All are timed in turn, in
// short rounds, and the median round of each counts.

#include "compositor/ZoomProcessor.h"

#include <QGuiApplication>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <memory>
#include <random>
#include <vector>

extern "C" {
#include <libswscale/swscale.h>
}

namespace {

using namespace velmo;

constexpr int kRounds = 31;
constexpr int kFramesPerRound = 10;
constexpr double kFrameSeconds = 1.0 / 30;

struct Subject {
    const char* name;
    PixelFormat format;
    AVPixelFormat ffmpegFormat;
    int width;
    int height;
    double scale;
};

constexpr Subject kSubjects[] = {
    {"1920x1080 NV12 zoom 2", PixelFormat::nv12, AV_PIX_FMT_NV12, 1920, 1080, 2.0},
    {"1920x1080 NV12 zoom 1.25", PixelFormat::nv12, AV_PIX_FMT_NV12, 1920, 1080, 1.25},
    {"1920x1080 NV12 zoom 6", PixelFormat::nv12, AV_PIX_FMT_NV12, 1920, 1080, 6.0},
    {"3840x2160 NV12 zoom 2", PixelFormat::nv12, AV_PIX_FMT_NV12, 3840, 2160, 2.0},
    {"1920x1080 BGRA zoom 2", PixelFormat::bgra, AV_PIX_FMT_BGRA, 1920, 1080, 2.0},
};

FrameRef noise(PixelFormat format, int width, int height) {
    std::mt19937 random(1);
    FrameRef frame = PixelBuffer::create(format, width, height);
    for (int p = 0; p < frame->planeCount(); ++p) {
        const PlaneView plane = frame->plane(p);
        for (int y = 0; y < plane.height; ++y) {
            std::generate_n(plane.row(y), plane.stride, [&] { return static_cast<std::uint8_t>(random()); });
        }
    }
    return frame;
}

double threadMilliseconds() {
    timespec spent{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &spent);
    return static_cast<double>(spent.tv_sec) * 1e3 + static_cast<double>(spent.tv_nsec) * 1e-6;
}

template <typename Work>
double millisecondsPerFrame(Work work) {
    const double start = threadMilliseconds();
    for (int i = 0; i < kFramesPerRound; ++i) {
        work();
    }
    return (threadMilliseconds() - start) / kFramesPerRound;
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

/// The middle of the picture, stretched to the whole of `target`.
class SwscaleCrop {
public:
    SwscaleCrop(const Subject& subject, const FrameRef& source, const FrameRef& target)
        : height_(even(subject.height / subject.scale)), source_(source), target_(target) {
        const int width = even(subject.width / subject.scale);
        context_ = sws_getContext(width, height_, subject.ffmpegFormat, subject.width, subject.height,
                                  subject.ffmpegFormat, SWS_BILINEAR, nullptr, nullptr, nullptr);
        left_ = even((subject.width - width) / 2.0);
        top_ = even((subject.height - height_) / 2.0);
    }
    ~SwscaleCrop() { sws_freeContext(context_); }

    void operator()() const {
        const std::uint8_t* from[4] = {};
        std::uint8_t* to[4] = {};
        int fromStride[4] = {};
        int toStride[4] = {};
        for (int p = 0; p < source_->planeCount(); ++p) {
            const PlaneView plane = source_->plane(p);
            const int leftBytes = source_->format() == PixelFormat::bgra ? left_ * 4 : left_;
            from[p] = plane.row(p == 0 ? top_ : top_ / 2) + leftBytes;
            to[p] = target_->plane(p).data;
            fromStride[p] = static_cast<int>(plane.stride);
            toStride[p] = static_cast<int>(target_->plane(p).stride);
        }
        sws_scale(context_, from, fromStride, 0, height_, to, toStride);
    }

private:
    static int even(double value) { return static_cast<int>(value / 2) * 2; }

    int height_;
    FrameRef source_;
    FrameRef target_;
    SwsContext* context_ = nullptr;
    int left_ = 0;
    int top_ = 0;
};

class FrameClock final : public Clock {
public:
    MediaTime now() const override { return MediaTime::fromSeconds(seconds_); }
    double seconds() const { return seconds_; }
    void advance() { seconds_ += kFrameSeconds; }

private:
    double seconds_ = 0;
};

/// A pointer that circles over the screen with chosen effects live, the zoom on its way in or out all the time.
class Class {
public:
    Class(const FrameRef& source, bool spotlight, bool bubble) : source_(source), bubble_(bubble) {
        zoom_.configure({0, 0, 1, 1});
        zoom_.setSpotlight(spotlight);
        zoom_.setEnabled(true);
        for (int i = 0; i < 60; ++i) {
            (*this)();
        }
    }

    void operator()() {
        if (bubble_ && frame_ % 90 == 0) {
            zoom_.showBubble(clock_.seconds(), {{0.12, 0.66, 0.44, 1}, {0.95, 0.76, 0.3, 1}, {0.23, 0.51, 0.96, 1}});
        }
        zoom_.setLevel(frame_ / 20 % 2 == 0 ? 2.5 : 1.5);
        zoom_.update({0.5 + 0.3 * std::cos(frame_ * 0.05), 0.5 + 0.3 * std::sin(frame_ * 0.05)}, {});
        zoom_.stepTo(clock_.seconds());
        zoom_.render(source_, MediaTime::fromSeconds(clock_.seconds()), MediaTime(1, 30));
        clock_.advance();
        ++frame_;
    }

private:
    FrameClock clock_;
    ZoomProcessor zoom_{clock_};
    FrameRef source_;
    bool bubble_;
    int frame_ = 0;
};

/// Premultiplied, as a bubble's window is: a disc with a soft rim on a clear ground.
FrameRef bubblePicture(int width, int height) {
    FrameRef frame = noise(PixelFormat::bgra, width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const double away = std::hypot((x + 0.5) / width - 0.5, (y + 0.5) / height - 0.5);
            const double alpha = std::clamp((0.48 - away) * 20, 0.0, 1.0);
            std::uint8_t* pixel = frame->plane(0).row(y) + 4 * x;
            for (int c = 0; c < 3; ++c) {
                pixel[c] = static_cast<std::uint8_t>(pixel[c] * alpha);
            }
            pixel[3] = static_cast<std::uint8_t>(255 * alpha);
        }
    }
    return frame;
}

/// The teacher in the picture: two bubbles of which one is dragged, light, pointer bubble, and the camera's column if
/// asked for, with its name tag and a 720p camera that gives a new picture for each frame. The screen has 1920 by 1080
/// points; the windows' pictures have the pixels that they take in the frame.
class Lesson {
public:
    enum class Kind { everything, column, columnSliding, everythingAndColumn };

    Lesson(const FrameRef& source, Kind kind) : source_(source), kind_(kind) {
        const double scale = source->width() / kScreen.width;
        const auto pixels = [scale](double points) { return static_cast<int>(points * scale); };
        for (int i = 0; i < 2; ++i) {
            first_[i] = bubblePicture(pixels(264), pixels(264));
            second_[i] = bubblePicture(pixels(337), pixels(264));
            camera_[i] = noise(source->format(), 1280, 720);
        }
        zoom_.configure(kScreen);
        zoom_.setNameTag(ZoomProcessor::NameTagText{"Ana Martínez Soto", "Profesora de Matemáticas"});
        for (int i = 0; i < 60; ++i) {
            (*this)();
        }
    }

    void operator()() {
        const int turn = frame_ % 2;
        if (hasBubbles()) {
            zoom_.setLevel(2);
            zoom_.setEnabled(true);
            zoom_.setSpotlight(true);
            if (frame_ % 90 == 0) {
                zoom_.showBubble(clock_.seconds(), {{0.12, 0.66, 0.44, 1}, {0.95, 0.76, 0.3, 1}});
            }
            zoom_.setOverlay(0, first_[turn]);
            zoom_.setOverlay(1, second_[turn]);
        }
        if (kind_ != Kind::everything) {
            zoom_.setCameraFrame(camera_[turn]);
            zoom_.setColumn(kind_ != Kind::columnSliding || frame_ / 15 % 2 == 0, true);
        }
        zoom_.update({960 + 500 * std::cos(frame_ * 0.05), 540 + 300 * std::sin(frame_ * 0.05)}, bubbles());
        zoom_.stepTo(clock_.seconds());
        zoom_.render(source_, MediaTime::fromSeconds(clock_.seconds()), MediaTime(1, 30));
        clock_.advance();
        ++frame_;
    }

private:
    static constexpr Rect kScreen{0, 0, 1920, 1080};

    bool hasBubbles() const { return kind_ == Kind::everything || kind_ == Kind::everythingAndColumn; }

    std::vector<BubbleInfo> bubbles() const {
        if (!hasBubbles()) {
            return {};
        }
        BubbleInfo first;
        first.window = {40.0 + frame_ % 300, 40, 264, 264};
        BubbleInfo second;
        second.window = {1543, 40, 337, 264};
        second.key = 1;
        return {first, second};
    }

    FrameClock clock_;
    ZoomProcessor zoom_{clock_};
    FrameRef source_;
    Kind kind_;
    FrameRef first_[2];
    FrameRef second_[2];
    FrameRef camera_[2];
    int frame_ = 0;
};

/// Whether the limit is kept, in milliseconds a frame.
bool measureLesson(const Subject& subject, double limit) {
    const FrameRef source = noise(subject.format, subject.width, subject.height);
    struct Part {
        const char* name;
        Lesson lesson;
        std::vector<double> times;
    };
    std::vector<std::unique_ptr<Part>> parts;
    const auto add = [&](const char* name, Lesson::Kind kind) {
        parts.push_back(std::unique_ptr<Part>(new Part{name, Lesson(source, kind), {}}));
    };
    add("everything", Lesson::Kind::everything);
    add("column", Lesson::Kind::column);
    add("column sliding", Lesson::Kind::columnSliding);
    add("both at once", Lesson::Kind::everythingAndColumn);
    for (int round = 0; round < kRounds; ++round) {
        for (const auto& part : parts) {
            part->times.push_back(millisecondsPerFrame([&] { part->lesson(); }));
        }
    }
    bool kept = true;
    for (const auto& part : parts) {
        const double typical = median(part->times);
        kept = kept && typical <= limit;
        std::printf("%-26s %-14s %6.3f ms (worst round %6.3f ms), limit %2.0f ms: %s\n", subject.name, part->name,
                    typical, *std::max_element(part->times.begin(), part->times.end()), limit,
                    typical <= limit ? "kept" : "EXCEEDED");
    }
    return kept;
}

/// Whether the limit is kept, in milliseconds a frame.
bool measureEffects(const Subject& subject, double limit) {
    const FrameRef source = noise(subject.format, subject.width, subject.height);
    Class zoomed(source, false, false);
    Class lit(source, true, false);
    Class all(source, true, true);
    std::vector<double> times[3];
    for (int round = 0; round < kRounds; ++round) {
        times[0].push_back(millisecondsPerFrame([&] { zoomed(); }));
        times[1].push_back(millisecondsPerFrame([&] { lit(); }));
        times[2].push_back(millisecondsPerFrame([&] { all(); }));
    }
    const double typical = median(times[2]);
    std::printf(
        "%-26s moving zoom %6.3f ms, with spotlight %6.3f ms, with pointer bubble as well %6.3f ms (worst round "
        "%6.3f ms), limit %2.0f ms: %s\n",
        subject.name, median(times[0]), median(times[1]), typical, *std::max_element(times[2].begin(), times[2].end()),
        limit, typical <= limit ? "kept" : "EXCEEDED");
    return typical <= limit;
}

void measure(const Subject& subject) {
    const FrameRef source = noise(subject.format, subject.width, subject.height);
    const SwscaleCrop swscale(subject, source, PixelBuffer::create(subject.format, subject.width, subject.height));
    ZoomProcessor resting;
    resting.setScale(subject.scale);
    ZoomProcessor moving;
    double drift = 0;

    std::vector<double> rest;
    std::vector<double> motion;
    std::vector<double> reference;
    for (int round = 0; round < kRounds; ++round) {
        rest.push_back(millisecondsPerFrame([&] { resting.render(source, MediaTime::zero(), MediaTime(1, 30)); }));
        motion.push_back(millisecondsPerFrame([&] {
            moving.setScale(subject.scale + (drift += 1e-5)); // a new crop for each frame
            moving.render(source, MediaTime::zero(), MediaTime(1, 30));
        }));
        reference.push_back(millisecondsPerFrame([&] { swscale(); }));
    }
    std::printf("%-26s render %6.3f ms, while zooming %6.3f ms, swscale bilinear %6.3f ms: %4.1f times as fast\n",
                subject.name, median(rest), median(motion), median(reference), median(reference) / median(motion));
}

} // namespace

int main(int count, char** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(count, arguments); // the name tag needs its fonts
    for (const Subject& subject : kSubjects) {
        measure(subject);
    }
    bool kept = measureEffects({"1920x1080 NV12", PixelFormat::nv12, AV_PIX_FMT_NV12, 1920, 1080, 2}, 4);
    kept = measureEffects({"3840x2160 NV12", PixelFormat::nv12, AV_PIX_FMT_NV12, 3840, 2160, 2}, 16) && kept;
    kept = measureEffects({"1920x1080 BGRA", PixelFormat::bgra, AV_PIX_FMT_BGRA, 1920, 1080, 2}, 4) && kept;
    kept = measureLesson({"1920x1080 NV12", PixelFormat::nv12, AV_PIX_FMT_NV12, 1920, 1080, 2}, 6) && kept;
    kept = measureLesson({"3840x2160 NV12", PixelFormat::nv12, AV_PIX_FMT_NV12, 3840, 2160, 2}, 24) && kept;
    return kept ? 0 : 1;
}
