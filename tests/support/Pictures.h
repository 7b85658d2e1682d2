#pragma once

#include "media/PixelBuffer.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <string>

namespace velmo::test {

enum class Content { noise, blackAndWhite, gradient, flat };

/// A picture of which every byte, the spare ones included, follows from the arguments.
FrameRef makePicture(PixelFormat format, int width, int height, Content content, std::uint32_t seed = 1);

/// Format and size are equal, and no component differs by more than `tolerance` code values. A failure leaves
/// `name`-actual, -expected and -difference (amplified) as PNG files in `pictureFolder()`.
::testing::AssertionResult picturesAgree(const PixelBuffer& actual, const PixelBuffer& expected, int tolerance,
                                         const std::string& name);

/// A folder below the build folder.
std::string pictureFolder();

} // namespace velmo::test
