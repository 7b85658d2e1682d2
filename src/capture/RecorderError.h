#pragma once

#include "base/Result.h"

#include <string_view>

namespace velmo {

/// Why a recording could not be made, with the text that is shown. The codes follow the order of the functions, from 0.
struct RecorderError {
    static constexpr const char* kDomain = "VelmoStudio.RecorderError";

    /// The file could not be written; `message` tells more and may be empty.
    static Error writer(std::string_view message);
    /// There is nothing to capture; `message` is shown as it is.
    static Error noSource(std::string_view message);
    /// The recording ended before a first picture.
    static Error noFrames();
};

} // namespace velmo
