#include "platform/x11/internal/WindowComposer.h"

#include "platform/ScreenCapture.h"

#include <cstring>
#include <utility>

namespace velmo::x11 {
namespace {

/// A request of its own costs about as much as fetching this many pixels (measured on a local server).
constexpr std::int64_t kPixelsPerRequest = 16 * 1024;
constexpr std::size_t kPieceAlignment = 64;

} // namespace

WindowComposer::WindowComposer(XConnection& connection, const PixelRect& frame, Exclusion exclusion)
    : connection_(connection), tracker_(connection, std::move(exclusion)), fetcher_(connection),
      background_(std::in_place, connection, frame), frame_(frame) {}

WindowComposer::WindowComposer(XConnection& connection, xcb_window_t window)
    : connection_(connection), tracker_(connection, window), fetcher_(connection) {
    picture_.hasAlpha = true;
}

Result<void> WindowComposer::begin() {
    if (background_ && !allocate(frame_.width, frame_.height)) {
        return Error{kStreamErrorDomain, kStreamErrorFailedToStart,
                     "No hay memoria suficiente para grabar la pantalla."};
    }
    if (background_) {
        background_->begin();
    }
    invalidate();
    return tracker_.begin();
}

void WindowComposer::invalidate() {
    unread_.add(frame_);
}

bool WindowComposer::handle(const xcb_generic_event_t& event) {
    if (background_ && background_->handle(event)) {
        invalidate();
        return true;
    }
    return tracker_.handle(event);
}

bool WindowComposer::allocate(int width, int height) {
    const std::size_t bytes = static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4;
    if (canvas_ == nullptr || canvas_->size() < bytes) {
        canvas_ = SharedSegment::create(connection_, bytes);
        // each piece begins on its own boundary, so the pieces together may be a little more than the picture
        staging_ = SharedSegment::create(connection_, bytes + kPieceAlignment);
    }
    if (canvas_ == nullptr || staging_ == nullptr) {
        picture_ = {nullptr, 0, 0, 0, picture_.hasAlpha};
        return false;
    }
    picture_ = {canvas_->data(), std::ptrdiff_t{4} * width, width, height, picture_.hasAlpha};
    canvasImage_.reset(pixman_image_create_bits_no_clear(picture_.hasAlpha ? PIXMAN_a8r8g8b8 : PIXMAN_x8r8g8b8, width,
                                                         height, reinterpret_cast<std::uint32_t*>(canvas_->data()),
                                                         width * 4));
    return true;
}

/// One window only: the picture goes where the window is. False when there is nothing to show.
bool WindowComposer::placeFrame() {
    if (background_) {
        return true;
    }
    if (tracker_.visible().empty()) {
        return false;
    }
    const PixelRect outer = tracker_.visible().front()->outer;
    const bool resized = outer.width != picture_.width || outer.height != picture_.height;
    unread_.translate(outer.x - frame_.x, outer.y - frame_.y); // a window that only moved looks as before
    frame_ = outer;
    if (resized && !allocate(outer.width, outer.height)) {
        return false;
    }
    if (resized) {
        invalidate();
    }
    return true;
}

Region WindowComposer::compose() {
    Region dirty = tracker_.update();
    if (!placeFrame()) {
        return {};
    }
    dirty.add(unread_);
    unread_.clear();
    dirty.intersect(frame_);
    if (dirty.isEmpty()) {
        return {};
    }
    planLayers(dirty);
    paintUnderneath(underneath_);
    tracker_.askForLateDamage();
    paintLayers();
    Region late = tracker_.takeLateDamage();
    late.subtract(dirty);
    late.intersect(frame_);
    unread_.add(late);
    dirty.translate(-frame_.x, -frame_.y);
    return dirty;
}

void WindowComposer::planLayers(const Region& dirty) {
    layers_.clear();
    underneath_ = dirty;
    const auto& windows = tracker_.visible();
    for (auto it = windows.rbegin(); it != windows.rend() && !underneath_.isEmpty(); ++it) {
        Region region = (*it)->bounds();
        region.intersect(underneath_);
        if (region.isEmpty()) {
            continue;
        }
        if (replaces(**it)) {
            underneath_.subtract(region);
        }
        layers_.push_back({*it, std::move(region)});
    }
}

void WindowComposer::paintUnderneath(const Region& region) {
    if (region.isEmpty()) {
        return;
    }
    if (background_) {
        background_->paint(canvasImage_.get(), region);
        return;
    }
    region.forEach([this](const PixelRect& rect) {
        for (int y = rect.y; y < rect.bottom(); ++y) {
            std::memset(picture_.at(rect.x - frame_.x, y - frame_.y), 0, static_cast<std::size_t>(rect.width) * 4);
        }
    });
}

void WindowComposer::paintLayers() {
    stagingUsed_ = 0;
    for (auto layer = layers_.rbegin(); layer != layers_.rend(); ++layer) {
        fetchLayer(*layer);
    }
    finishPieces();
}

/// Its pixels take the place of what is under them. In a picture of one window there is nothing to shine through.
bool WindowComposer::replaces(const TrackedWindow& window) const {
    return window.opacity == 255 && (window.depth == 24 || picture_.hasAlpha);
}

/// Rows of the picture and of the reply are the same when the piece is as wide as the picture and nothing is blended.
bool WindowComposer::canGoDirect(const Layer& layer) const {
    const bool lacksAlpha = picture_.hasAlpha && layer.window->depth == 24;
    return replaces(*layer.window) && !lacksAlpha && layer.region.rectCount() == 1 &&
           layer.region.extents().width == frame_.width;
}

void WindowComposer::fetchLayer(const Layer& layer) {
    const PixelRect& outer = layer.window->outer;
    const bool direct = canGoDirect(layer);
    coverWithFewRects(layer.region, kPixelsPerRequest, rects_);
    Region left = layer.region;
    for (const PixelRect& rect : rects_) {
        const std::size_t bytes = static_cast<std::size_t>(rect.area()) * 4;
        if (!direct && stagingUsed_ + bytes > staging_->size()) {
            finishPieces();
        }
        Piece piece{&layer, rect, left, stagingUsed_, direct};
        piece.paint.intersect(rect);
        left.subtract(piece.paint);
        const std::size_t place =
            static_cast<std::size_t>(rect.y - frame_.y) * static_cast<std::size_t>(picture_.stride);
        fetcher_.request(layer.window->pixmap, rect.translated(-outer.x, -outer.y), direct ? *canvas_ : *staging_,
                         direct ? place : stagingUsed_);
        if (!direct) {
            stagingUsed_ += (bytes + kPieceAlignment - 1) / kPieceAlignment * kPieceAlignment;
        }
        pieces_.push_back(std::move(piece));
    }
}

void WindowComposer::finishPieces() {
    const std::vector<char>& arrived = fetcher_.collect();
    for (std::size_t i = 0; i < pieces_.size(); ++i) {
        if (arrived[i] == 0) { // it was unmapped or resized meanwhile; its event is on the way
            unread_.add(pieces_[i].paint);
            tracker_.pixelsWereRefused(*pieces_[i].layer->window);
        } else if (!pieces_[i].direct) {
            paint(pieces_[i]);
        }
    }
    pieces_.clear();
    stagingUsed_ = 0;
}

void WindowComposer::paint(const Piece& piece) {
    if (replaces(*piece.layer->window)) {
        piece.paint.forEach([&](const PixelRect& rect) { copyRows(piece, rect); });
    } else {
        blend(piece);
    }
}

void WindowComposer::copyRows(const Piece& piece, const PixelRect& rect) const {
    const bool needsAlpha = picture_.hasAlpha && piece.layer->window->depth == 24;
    const std::size_t rowBytes = static_cast<std::size_t>(piece.rect.width) * 4;
    const std::uint8_t* from = staging_->data() + piece.offset +
                               static_cast<std::size_t>(rect.y - piece.rect.y) * rowBytes +
                               static_cast<std::size_t>(rect.x - piece.rect.x) * 4;
    for (int y = rect.y; y < rect.bottom(); ++y, from += rowBytes) {
        std::uint8_t* to = picture_.at(rect.x - frame_.x, y - frame_.y);
        std::memcpy(to, from, static_cast<std::size_t>(rect.width) * 4);
        for (int x = 0; needsAlpha && x < rect.width; ++x) {
            to[4 * x + 3] = 255;
        }
    }
}

void WindowComposer::blend(const Piece& piece) {
    const TrackedWindow& window = *piece.layer->window;
    auto* pixels = reinterpret_cast<std::uint32_t*>(staging_->data() + piece.offset);
    const PixmanImage source(pixman_image_create_bits_no_clear(window.depth == 32 ? PIXMAN_a8r8g8b8 : PIXMAN_x8r8g8b8,
                                                               piece.rect.width, piece.rect.height, pixels,
                                                               piece.rect.width * 4));
    PixmanImage mask;
    if (window.opacity != 255) {
        const auto alpha = static_cast<std::uint16_t>(window.opacity * 0x101);
        const pixman_color_t color{0, 0, 0, alpha};
        mask.reset(pixman_image_create_solid_fill(&color));
    }
    piece.paint.forEach([&](const PixelRect& rect) {
        pixman_image_composite32(PIXMAN_OP_OVER, source.get(), mask.get(), canvasImage_.get(), rect.x - piece.rect.x,
                                 rect.y - piece.rect.y, 0, 0, rect.x - frame_.x, rect.y - frame_.y, rect.width,
                                 rect.height);
    });
}

} // namespace velmo::x11
