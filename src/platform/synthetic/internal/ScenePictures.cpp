#include "platform/synthetic/internal/ScenePictures.h"

#include "media/BgraToNv12.h"

#include <QPainter>
#include <QThreadPool>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <semaphore>
#include <utility>

namespace velmo::internal {

namespace {

constexpr std::uint8_t kBlack = 16;
constexpr std::uint8_t kWhite = 235;
constexpr std::uint8_t kNeutral = 128;
constexpr int kCell = 16; // of the counter, pixels
constexpr int kBits = 24;
constexpr int kPictures = 6; // in use at once: the mail, the feed, the screen, the compositor's two, one in the making

PlaneView viewOf(QImage& image) {
    return {image.bits(), image.bytesPerLine(), image.width(), image.height()};
}

void fill(const PlaneView& plane, int x, int bytes, int y, int rows, std::uint8_t value) {
    for (int row = y; row < y + rows; ++row) {
        std::memset(plane.row(row) + x, value, static_cast<std::size_t>(bytes));
    }
}

void copyPlane(const PlaneView& from, const PlaneView& to) {
    std::memcpy(to.data, from.data, static_cast<std::size_t>(from.stride) * static_cast<std::size_t>(from.height));
}

/// Does `paint` in a thread of Qt's pool and waits for it. Elsewhere Qt spreads each large fill over that pool, and waking
/// its threads dozens of times a picture costs as much as the painting.
template <typename Paint>
void inQtsPool(const Paint& paint) {
    std::binary_semaphore done(0);
    const bool started = QThreadPool::globalInstance()->tryStart([&] {
        paint();
        done.release();
    });
    if (started) {
        done.acquire();
    } else {
        paint();
    }
}

void burnCounter(const PixelBuffer& picture, std::int64_t number) {
    const PlaneView luma = picture.plane(0);
    const auto cell = [&luma](int index, bool lit) {
        fill(luma, index * kCell, kCell, 0, kCell, lit ? kWhite : kBlack);
    };
    cell(0, true);
    cell(1, false);
    for (int bit = 0; bit < kBits; ++bit) {
        cell(bit + 2, (number >> (kBits - 1 - bit) & 1) != 0);
    }
    fill(picture.plane(1), 0, (kBits + 2) * kCell, 0, kCell / 2, kNeutral);
}

} // namespace

ScenePictures::ScenePictures(std::unique_ptr<Scene> scene, SyntheticCameras::Options options)
    : scene_(std::move(scene)), options_(options), canvas_(Scene::kWidth, Scene::kHeight, QImage::Format_RGB32),
      still_(PixelBuffer::create(PixelFormat::nv12, Scene::kWidth, Scene::kHeight)),
      pool_(PixelBufferPool::create(PixelFormat::nv12, Scene::kWidth, Scene::kHeight, kPictures)) {
    canvas_.fill(Qt::black);
    {
        QPainter painter(&canvas_);
        painter.setRenderHint(QPainter::Antialiasing);
        scene_->paintStill(painter);
    }
    stillPart_ = canvas_.copy(scene_->movingPart());
    if (still_) {
        convertBgraToNv12(viewOf(canvas_), *still_, {0, 0, Scene::kWidth, Scene::kHeight});
    }
}

FrameRef ScenePictures::make(std::int64_t number, double seconds) {
    FrameRef picture = pool_ == nullptr || !still_ ? nullptr : pool_->take();
    if (!picture) {
        return nullptr;
    }
    if (flashesAt(seconds)) {
        fill(picture->plane(0), 0, Scene::kWidth, 0, Scene::kHeight, kWhite);
        fill(picture->plane(1), 0, Scene::kWidth, 0, Scene::kHeight / 2, kNeutral);
    } else {
        copyPlane(still_->plane(0), picture->plane(0));
        copyPlane(still_->plane(1), picture->plane(1));
        paintScene(*picture, seconds);
    }
    if (options_.counter) {
        burnCounter(*picture, number);
    }
    return picture;
}

void ScenePictures::paintScene(const PixelBuffer& picture, double seconds) {
    const QRect part = scene_->movingPart();
    inQtsPool([&] {
        QPainter painter(&canvas_);
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.drawImage(part.topLeft(), stillPart_);
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setClipRect(part);
        scene_->paintMoving(painter, seconds);
    });
    convertBgraToNv12(viewOf(canvas_), picture, {part.x(), part.y(), part.width(), part.height()});
}

bool ScenePictures::flashesAt(double seconds) const {
    return options_.flashEvery > 0 && std::fmod(seconds, options_.flashEvery) < kFlashLength;
}

} // namespace velmo::internal
