#include "surfaces/internal/FrameTap.h"

#include "media/Mirror.h"

#include <utility>

namespace velmo::internal {

namespace {

constexpr int kPictures = 4; // in the making, in the mail, in two frames

} // namespace

void FrameTap::open(bool mirrored, Customer customer) {
    customer_ = std::move(customer);
    mirrored_ = mirrored;
}

void FrameTap::close() {
    customer_ = nullptr;
    mirrorImages_.reset();
}

void FrameTap::pass(const FrameRef& picture) {
    if (!customer_) {
        return;
    }
    if (FrameRef shown = mirrored_ ? mirrorImage(*picture) : picture) {
        customer_(std::move(shown));
    }
}

FrameRef FrameTap::mirrorImage(const PixelBuffer& picture) {
    if (mirrorImages_ == nullptr || mirrorImages_->width() != picture.width() ||
        mirrorImages_->height() != picture.height()) {
        mirrorImages_ = PixelBufferPool::create(PixelFormat::nv12, picture.width(), picture.height(), kPictures);
    }
    FrameRef image = mirrorImages_ == nullptr ? nullptr : mirrorImages_->take();
    if (image) {
        mirrorNv12(picture, *image);
    }
    return image;
}

} // namespace velmo::internal
