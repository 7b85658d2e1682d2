#pragma once

class QRegion;
class QWidget;

/// What Qt leaves out of the X11 windows that it makes. Does nothing on other platforms of Qt. Main thread.
namespace velmo::X11Window {

/// What of the window takes the mouse, in its own points. The window must have been shown.
void setInputRegion(const QWidget& window, const QRegion& region);
/// Whether a compositing manager runs, so that a window can be seen through.
bool isComposited();

} // namespace velmo::X11Window
