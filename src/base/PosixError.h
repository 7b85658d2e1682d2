#pragma once

#include "base/Result.h"

#include <system_error>

namespace velmo {

/// Domain of errors whose code is an errno.
inline constexpr const char* kPosixErrorDomain = "POSIX";

/// With the system's own words.
inline Error posixError(int number) {
    return {kPosixErrorDomain, number, std::generic_category().message(number)};
}

} // namespace velmo
