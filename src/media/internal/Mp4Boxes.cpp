#include "media/internal/Mp4Boxes.h"

namespace velmo::internal {

Mp4Boxes::Box::Box(Mp4Boxes& boxes, std::string_view type) : boxes_(boxes), begin_(boxes.bytes_.size()) {
    boxes.u32(0);
    boxes.text(type);
}

Mp4Boxes::Box::Box(Mp4Boxes& boxes, std::string_view type, std::uint8_t version, std::uint32_t flags)
    : Box(boxes, type) {
    boxes.u8(version);
    boxes.u24(flags);
}

Mp4Boxes::Box::~Box() {
    const std::size_t size = boxes_.bytes_.size() - begin_;
    for (std::size_t i = 0; i < 4; ++i) {
        boxes_.bytes_[begin_ + i] = static_cast<std::byte>(size >> (8 * (3 - i)) & 0xFF);
    }
}

Mp4Boxes::Box Mp4Boxes::box(std::string_view type) {
    return {*this, type};
}

Mp4Boxes::Box Mp4Boxes::fullBox(std::string_view type, std::uint8_t version, std::uint32_t flags) {
    return {*this, type, version, flags};
}

void Mp4Boxes::text(std::string_view text) {
    raw(std::as_bytes(std::span(text)));
}

void Mp4Boxes::raw(std::span<const std::byte> bytes) {
    bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
}

void Mp4Boxes::number(std::uint64_t value, int count) {
    for (int i = count - 1; i >= 0; --i) {
        bytes_.push_back(static_cast<std::byte>(value >> (8 * i) & 0xFF));
    }
}

} // namespace velmo::internal
