#pragma once

#include <cstddef>

namespace velmo::test {

/// How often memory was taken from the heap since the program began, on all threads. Only in a program that has
/// `AllocationCount.cpp` among its sources.
std::size_t allocationCount();

} // namespace velmo::test
