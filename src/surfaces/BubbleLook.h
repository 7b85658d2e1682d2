#pragma once

#include "base/Color.h"
#include "settings/BubbleShape.h"
#include "settings/NameTag.h"
#include "settings/RingStyle.h"

#include <optional>
#include <vector>

namespace velmo {

/// How a bubble is dressed. What is not told by the settings are the values of a bubble nobody has dressed yet.
struct BubbleLook {
    BubbleShape shape = BubbleShape::circle;
    double corner = 0.2; ///< of a card, as a fraction of the shorter side
    RingStyle style = RingStyle::chameleon;
    double weight = 1; ///< multiplies the line widths
    bool softShadow = true;
    Color ringColor = Color::fromHex(0x0A84FF);
    std::vector<Color> chameleonColors = {Color::fromHex(0x00F0FF), Color::fromHex(0xFF2BD6), Color::fromHex(0xB6FF00),
                                          Color::fromHex(0xFFE600), Color::fromHex(0x7A5CFF)};
    std::optional<NameTag::Text> nameTag;

    /// The colour that stands for the ring elsewhere: the first of the chameleon's, else the ring's.
    const Color& accent() const {
        return style == RingStyle::chameleon && !chameleonColors.empty() ? chameleonColors.front() : ringColor;
    }

    friend bool operator==(const BubbleLook&, const BubbleLook&) = default;
};

} // namespace velmo
