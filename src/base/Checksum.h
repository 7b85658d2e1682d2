#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace velmo {

/// CRC-32 as zip and PNG have it. `before` continues the sum of the bytes that came earlier.
std::uint32_t checksum(std::span<const std::byte> bytes, std::uint32_t before = 0);

} // namespace velmo
