#pragma once

#include "platform/Screens.h"

class QScreen;

namespace velmo {

/// The screens as Qt lays out its windows on them. Needs the QGuiApplication. Main thread.
///
/// `displayID` is the RandR output of the screen's monitor (its first one when it spans several): the number by which
/// screen capture knows the display. Off X11 it is the screen's place in the list, counted from 1.
class QtScreens final : public Screens {
public:
    std::vector<Screen> all() const override;

    /// The Qt screen of `displayID`; null when it has gone. Borrowed from Qt.
    static QScreen* find(std::uint32_t displayID);
    /// What `all()` says of one screen.
    static Screen describe(const QScreen& screen);
};

} // namespace velmo
