#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace velmo::internal {

/// Puts MP4 boxes together: numbers are big-endian, and a box's size is filled in when it ends.
class Mp4Boxes {
public:
    /// Ends its box with its scope.
    class Box {
    public:
        Box(Mp4Boxes& boxes, std::string_view type);
        Box(Mp4Boxes& boxes, std::string_view type, std::uint8_t version, std::uint32_t flags);
        ~Box();
        Box(const Box&) = delete;
        Box& operator=(const Box&) = delete;

    private:
        Mp4Boxes& boxes_;
        std::size_t begin_;
    };

    /// `type` has four characters.
    [[nodiscard]] Box box(std::string_view type);
    /// A box with version and flags.
    [[nodiscard]] Box fullBox(std::string_view type, std::uint8_t version, std::uint32_t flags);

    void u8(std::uint64_t value) { number(value, 1); }
    void u16(std::uint64_t value) { number(value, 2); }
    void u24(std::uint64_t value) { number(value, 3); }
    void u32(std::uint64_t value) { number(value, 4); }
    void u64(std::uint64_t value) { number(value, 8); }
    void text(std::string_view text);
    void raw(std::span<const std::byte> bytes);
    void zeros(std::size_t count) { bytes_.resize(bytes_.size() + count); }
    void reserve(std::size_t count) { bytes_.reserve(bytes_.size() + count); }

    const std::vector<std::byte>& bytes() const { return bytes_; }
    std::vector<std::byte> take() { return std::move(bytes_); }

private:
    void number(std::uint64_t value, int count);

    std::vector<std::byte> bytes_;
};

} // namespace velmo::internal
