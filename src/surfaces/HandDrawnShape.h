#pragma once

#include "surfaces/DrawingItem.h"

#include <QPainterPath>

namespace velmo {

/// The line of a shape as a hand would draw it, twice over, which is what makes it look like pencil. All its wobble
/// follows from the mark's seed: the same mark gives the same line for ever. Points of the view, y up. Empty for a
/// mark that is no shape or has not two points.
QPainterPath handDrawnShape(const DrawingItem& item);

} // namespace velmo
