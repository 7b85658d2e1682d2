#pragma once

#include <cstddef>

namespace velmo::test {

/// How often this thread has asked `operator new` for memory. The test program counts every call.
std::size_t allocationsOfThisThread();

} // namespace velmo::test
