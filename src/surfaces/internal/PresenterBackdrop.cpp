#include "surfaces/internal/PresenterBackdrop.h"

#include "surfaces/BackdropBlur.h"
#include "surfaces/internal/PresenterGround.h"

#include <QCoreApplication>
#include <QMetaObject>

#include <cstring>
#include <utility>

namespace velmo {
namespace {

constexpr double kPauseSeconds = 1;

template <typename F>
void onMainThread(F&& call) {
    if (QCoreApplication* const application = QCoreApplication::instance()) {
        QMetaObject::invokeMethod(application, std::forward<F>(call), Qt::QueuedConnection);
    }
}

/// Of a BGRA picture; its memory is borrowed.
QImage imageOf(const PixelBuffer& picture) {
    const PlaneView plane = picture.plane(0);
    return {plane.data, plane.width, plane.height, plane.stride, QImage::Format_RGB32};
}

bool isSame(const FrameRef& a, const FrameRef& b) {
    if (!a || !b || a->width() != b->width() || a->height() != b->height()) {
        return false;
    }
    const PlaneView first = a->plane(0);
    const PlaneView second = b->plane(0);
    for (int y = 0; y < first.height; ++y) {
        if (std::memcmp(first.row(y), second.row(y), static_cast<std::size_t>(first.width) * 4) != 0) {
            return false;
        }
    }
    return true;
}

} // namespace

struct PresenterBackdrop::Worker {
    BackdropBlur blur;
    FrameRef last;
    int lastGeneration = 0;

    /// Null when nothing changed.
    QImage ground(const FrameRef& picture, int generation, QSize pixels) {
        if (generation == lastGeneration && isSame(picture, last)) {
            return {};
        }
        last = picture;
        lastGeneration = generation;
        return PresenterGround::tinted(blur.render(imageOf(*picture)), pixels);
    }
};

PresenterBackdrop::PresenterBackdrop(Services services, std::function<void(QImage)> shown)
    : services_(std::move(services)), shown_(std::move(shown)), worker_(std::make_unique<Worker>()) {}

PresenterBackdrop::~PresenterBackdrop() {
    life_.reset();
    services_.queue.reset(); // its last work needs the worker
}

void PresenterBackdrop::warmUp() {
    services_.queue->async([worker = worker_.get()] { worker->blur.warmUp(); });
}

void PresenterBackdrop::start(const ScreenSnapshot::Subject& subject, QSize pixels) {
    snapshot_ = ScreenSnapshot::create(services_.capture, subject);
    pixels_ = pixels;
    running_ = true;
    shoot(++generation_);
}

void PresenterBackdrop::stop() {
    running_ = false;
    snapshot_.reset();
}

void PresenterBackdrop::shoot(int generation) {
    if (!isWanted(generation)) {
        return;
    }
    snapshot_->capture([this, life = Life(life_), generation](const FrameRef& picture) {
        onMainThread([this, life, generation, picture] {
            if (!life.expired() && isWanted(generation)) {
                took(generation, picture);
            }
        });
    });
}

void PresenterBackdrop::took(int generation, const FrameRef& picture) {
    if (!picture) {
        made(generation, {});
        return;
    }
    services_.queue->async(
        [this, life = Life(life_), worker = worker_.get(), generation, picture = FrameRef(picture), pixels = pixels_] {
            QImage ground = worker->ground(picture, generation, pixels);
            onMainThread([this, life, generation, ground = std::move(ground)] {
                if (!life.expired() && isWanted(generation)) {
                    made(generation, ground);
                }
            });
        });
}

void PresenterBackdrop::made(int generation, QImage ground) {
    if (!ground.isNull()) {
        shown_(std::move(ground));
    }
    services_.timers.after(kPauseSeconds, [this, life = Life(life_), generation] {
        if (!life.expired()) {
            shoot(generation);
        }
    });
}

} // namespace velmo
