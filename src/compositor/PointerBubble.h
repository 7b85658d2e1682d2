#pragma once

#include "base/Color.h"
#include "base/Geometry.h"

#include <cstdint>
#include <span>
#include <vector>

class QPainter;

/// The iridescent soap bubble that sits on the pointer for some seconds after a circle gesture. A pure function of
/// age, radius and colours, shared by the video and the screen so that both show the same picture. Any thread.
namespace velmo::PointerBubble {

/// Life in seconds before it starts to vanish.
inline constexpr double duration = 3.0;
/// Radius as a fraction of the height of the screen or frame.
inline constexpr double radiusFraction = 0.034;

/// `age` in seconds; true from 0 up to `duration` + 0.4.
bool isVisible(double age);

/// Paints on `painter`, in its own coordinates (y down), and leaves its state as it was. The colours run
/// counter-clockwise as seen. Nothing for an empty list of colours.
void draw(QPainter& painter, Point center, double radius, double age, std::span<const Color> colors);

/// The colours of a palette of 0xRRGGBB values.
std::vector<Color> paletteColors(std::span<const std::uint32_t> hexes);

} // namespace velmo::PointerBubble
