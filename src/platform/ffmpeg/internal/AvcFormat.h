#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <vector>

namespace velmo::internal {

// H.264 as encoders give it (units behind start codes) and as MP4 wants it (units behind their lengths).

/// Calls `unit` with each unit of the stream, without its start code.
void forEachUnit(std::span<const std::byte> stream, const std::function<void(std::span<const std::byte>)>& unit);

/// The decoder configuration record from the headers that the encoder gave. Absent without a usable one.
std::optional<std::vector<std::byte>> decoderConfig(std::span<const std::byte> headers);

/// Replaces `sample` by the stream's units behind lengths of four bytes.
void unitsWithLengths(std::span<const std::byte> stream, std::vector<std::byte>& sample);

} // namespace velmo::internal
