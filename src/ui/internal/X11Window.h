#pragma once

#include <cstdint>

class QRegion;
class QWidget;

/// What Qt leaves out of the X11 windows that it makes. Does nothing on other platforms of Qt. Main thread.
namespace velmo::X11Window {

/// What of the window takes the mouse, in its own points. The window must have been shown.
void setInputRegion(const QWidget& window, const QRegion& region);
/// Whether a compositing manager runs, so that a window can be seen through.
bool isComposited();

/// The window that has the keyboard; 0 where there is none or it cannot be told.
std::uint32_t keyboardOwner();
/// Gives the keyboard to a window without asking the window manager; 0 to the one under the mouse. A window that has
/// gone or is not shown gets nothing.
void setKeyboardOwner(std::uint32_t window);

/// Buttons and movements that belong to no other window of this program go to `window`, until released.
void grabMouse(std::uint32_t window);
void releaseMouse();

} // namespace velmo::X11Window
