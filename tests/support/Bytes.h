#pragma once

#include <cstdint>
#include <vector>

namespace velmo::test {

using Bytes = std::vector<std::uint8_t>;

} // namespace velmo::test
