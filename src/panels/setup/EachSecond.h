#pragma once

#include <QObject>

#include <functional>
#include <memory>

class QWidget;

namespace velmo {

class MainTimer;
class MainTimers;

/// Calls `look` each second while a part of the setup panel is seen, for what is plugged in and how the screens are
/// set. Main thread. The part and the timers are borrowed and outlive this object.
class EachSecond final : public QObject {
public:
    EachSecond(QWidget& part, MainTimers& timers, std::function<void()> look);
    ~EachSecond() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    MainTimers& timers_;
    const std::function<void()> look_;
    std::unique_ptr<MainTimer> ticks_;
};

} // namespace velmo
