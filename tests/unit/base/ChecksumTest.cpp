#include "base/Checksum.h"

#include <gtest/gtest.h>

#include <string>

namespace velmo {
namespace {

std::uint32_t sumOf(const std::string& text, std::uint32_t before = 0) {
    return checksum(std::as_bytes(std::span(text)), before);
}

TEST(Checksum, IsThatOfZipAndPng) {
    EXPECT_EQ(sumOf("123456789"), 0xCBF43926U);
    EXPECT_EQ(sumOf(""), 0U);
    EXPECT_EQ(sumOf("The quick brown fox jumps over the lazy dog"), 0x414FA339U);
}

TEST(Checksum, GoesOnFromWhereItWas) {
    const std::string text = "una clase de cuarenta y cinco minutos";
    for (std::size_t cut = 0; cut <= text.size(); ++cut) {
        EXPECT_EQ(sumOf(text.substr(cut), sumOf(text.substr(0, cut))), sumOf(text));
    }
}

} // namespace
} // namespace velmo
