#pragma once

#include "platform/Screens.h"

#include <QRect>

/// Where a screen, or anything in global points, is in Qt's coordinates, which count downwards. Main thread.
namespace velmo::ScreenPlace {

QRect frame(const Screen& screen);
/// What panels and docks of the desktop leave free of it.
QRect visibleFrame(const Screen& screen);

/// Rounded to whole points.
QRect toQt(const Rect& global);
Rect toGlobal(const QRect& place);

} // namespace velmo::ScreenPlace
