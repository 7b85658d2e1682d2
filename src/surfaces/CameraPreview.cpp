#include "surfaces/CameraPreview.h"

#include "surfaces/internal/PictureFill.h"

namespace velmo {
namespace {

constexpr double kNoPictureWhite = 0.08;

} // namespace

CameraPreview::CameraPreview(CameraFeed& feed) : feed_(feed) {
    connect(&feed_, &CameraFeed::pictureChanged, this, &CameraPreview::changed);
}

CameraPreview::~CameraPreview() = default;

void CameraPreview::setMirrored(bool mirrored) {
    if (mirrored != mirrored_) {
        mirrored_ = mirrored;
        image_ = {};
        emit changed();
    }
}

const QImage& CameraPreview::image(QSize pixels) {
    const QSize size = pixels.expandedTo({1, 1});
    FrameRef picture = feed_.picture();
    if (image_.size() == size && picture == shown_) {
        return image_;
    }
    if (image_.size() != size) {
        image_ = QImage(size, QImage::Format_RGB32);
    }
    if (picture && picture->format() == PixelFormat::nv12) {
        const PictureFill::Shape shape{{picture->width(), picture->height()}, size, mirrored_};
        if (!fill_ || !(fill_->shape() == shape)) {
            fill_ = std::make_unique<PictureFill>(shape);
        }
        fill_->fill(*picture, image_);
    } else {
        image_.fill(QColor::fromRgbF(kNoPictureWhite, kNoPictureWhite, kNoPictureWhite));
    }
    shown_ = std::move(picture);
    return image_;
}

} // namespace velmo
