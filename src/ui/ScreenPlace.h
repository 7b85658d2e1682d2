#pragma once

#include "platform/Screens.h"

#include <QRect>

/// Where a screen is in Qt's coordinates, which count downwards. Main thread.
namespace velmo::ScreenPlace {

QRect frame(const Screen& screen);
/// What panels and docks of the desktop leave free of it.
QRect visibleFrame(const Screen& screen);

} // namespace velmo::ScreenPlace
