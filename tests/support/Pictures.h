#pragma once

#include "media/PixelBuffer.h"

#include <cstddef>
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

/// How many components differ by more than `tolerance` code values. Both of one format and size.
std::size_t componentsApart(const PixelBuffer& one, const PixelBuffer& other, int tolerance);

/// A folder below the build folder.
std::string pictureFolder();

} // namespace velmo::test
