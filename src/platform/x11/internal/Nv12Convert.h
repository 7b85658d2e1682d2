#pragma once

#include "media/PixelBuffer.h"
#include "platform/x11/internal/Picture.h"
#include "platform/x11/internal/PixelRect.h"

namespace velmo::x11 {

/// As `convertBgraToNv12`.
void convertToNv12(const Picture& from, const PixelBuffer& to, const PixelRect& rect);

/// Copies the part `rect` into the same place of a BGRA buffer; without alpha in `from` it comes out opaque.
void copyToBgra(const Picture& from, const PixelBuffer& to, const PixelRect& rect);

} // namespace velmo::x11
