#pragma once

#include "platform/Screens.h"

#include <QObject>

#include <vector>

class QScreen;

namespace velmo {

/// Hears of changes of the displays from Qt, after each has happened; so no step carries the begin flag.
/// Needs the QGuiApplication. Main thread. Callbacks are called until this object goes.
class QtDisplayReconfiguration final : public QObject, public DisplayReconfiguration {
public:
    static constexpr std::uint32_t kMoved = 2;
    static constexpr std::uint32_t kSetMain = 4;
    static constexpr std::uint32_t kSetMode = 8;
    static constexpr std::uint32_t kAdded = 16;
    static constexpr std::uint32_t kRemoved = 32;

    QtDisplayReconfiguration();
    void registerCallback(Callback callback) override;

private:
    void watch(QScreen* screen);
    void report(const QScreen* screen, std::uint32_t flags);

    std::vector<Callback> callbacks_;
};

} // namespace velmo
