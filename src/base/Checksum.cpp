#include "base/Checksum.h"

#include <array>

namespace velmo {

namespace {

// Eight tables, so that eight bytes go in one step: pictures are summed up while they are recorded.
using Tables = std::array<std::array<std::uint32_t, 256>, 8>;

constexpr Tables makeTables() {
    Tables tables{};
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        std::uint32_t sum = byte;
        for (int bit = 0; bit < 8; ++bit) {
            sum = (sum >> 1) ^ ((sum & 1U) != 0 ? 0xEDB88320U : 0U);
        }
        tables[0][byte] = sum;
    }
    for (std::size_t table = 1; table < tables.size(); ++table) {
        for (std::size_t byte = 0; byte < 256; ++byte) {
            const std::uint32_t sum = tables[table - 1][byte];
            tables[table][byte] = (sum >> 8) ^ tables[0][sum & 0xFFU];
        }
    }
    return tables;
}

constexpr Tables kTables = makeTables();

} // namespace

std::uint32_t checksum(std::span<const std::byte> bytes, std::uint32_t before) {
    const auto at = [&bytes](std::size_t i) { return std::to_integer<std::uint32_t>(bytes[i]); };
    std::uint32_t sum = ~before;
    while (bytes.size() >= 8) {
        const std::uint32_t low = sum ^ (at(0) | at(1) << 8 | at(2) << 16 | at(3) << 24);
        sum = kTables[7][low & 0xFF] ^ kTables[6][(low >> 8) & 0xFF] ^ kTables[5][(low >> 16) & 0xFF] ^
              kTables[4][low >> 24] ^ kTables[3][at(4)] ^ kTables[2][at(5)] ^ kTables[1][at(6)] ^ kTables[0][at(7)];
        bytes = bytes.subspan(8);
    }
    for (const std::byte byte : bytes) {
        sum = (sum >> 8) ^ kTables[0][(sum ^ std::to_integer<std::uint32_t>(byte)) & 0xFF];
    }
    return ~sum;
}

} // namespace velmo
