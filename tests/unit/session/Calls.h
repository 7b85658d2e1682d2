#pragma once

#include <string>
#include <vector>

namespace velmo::test {

/// What the fakes were told, in order.
using Calls = std::vector<std::string>;

} // namespace velmo::test
