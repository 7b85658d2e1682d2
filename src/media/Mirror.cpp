#include "media/Mirror.h"

#include <cstdint>
#include <cstring>

namespace velmo {

namespace {

constexpr int kWord = 8;

std::uint64_t reversedBytes(std::uint64_t word) {
    return __builtin_bswap64(word);
}

std::uint64_t reversedPairs(std::uint64_t word) {
    constexpr std::uint64_t kLow = 0x00ff00ff00ff00ffULL;
    const std::uint64_t reversed = __builtin_bswap64(word); // the pairs are in place now, each turned round
    return (reversed & kLow) << 8 | (reversed >> 8 & kLow);
}

/// `Unit` bytes stay together. Eight bytes at a time, what is left over singly.
template <int Unit, std::uint64_t (*Reversed)(std::uint64_t)>
void mirrorRow(const std::uint8_t* from, std::uint8_t* to, int bytes) {
    int at = 0;
    for (; at + kWord <= bytes; at += kWord) {
        std::uint64_t word = 0;
        std::memcpy(&word, from + at, kWord);
        word = Reversed(word);
        std::memcpy(to + bytes - at - kWord, &word, kWord);
    }
    for (; at < bytes; at += Unit) {
        std::memcpy(to + bytes - at - Unit, from + at, Unit);
    }
}

} // namespace

void mirrorNv12(const PixelBuffer& from, PixelBuffer& to) {
    const PlaneView luma = from.plane(0);
    for (int y = 0; y < luma.height; ++y) {
        mirrorRow<1, reversedBytes>(luma.row(y), to.plane(0).row(y), luma.width);
    }
    const PlaneView chroma = from.plane(1);
    for (int y = 0; y < chroma.height; ++y) {
        mirrorRow<2, reversedPairs>(chroma.row(y), to.plane(1).row(y), chroma.width * 2);
    }
    to.setColorTags(from.colorTags());
}

} // namespace velmo
