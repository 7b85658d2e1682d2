#include "panels/setup/EachSecond.h"

#include "session/MainTimers.h"

#include <QEvent>
#include <QWidget>

#include <utility>

namespace velmo {

EachSecond::EachSecond(QWidget& part, MainTimers& timers, std::function<void()> look)
    : timers_(timers), look_(std::move(look)) {
    part.installEventFilter(this);
}

EachSecond::~EachSecond() = default;

bool EachSecond::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Show) {
        ticks_ = timers_.repeat(1, look_);
    } else if (event->type() == QEvent::Hide && ticks_) {
        ticks_->invalidate(); // only that: it may be what calls
    }
    return QObject::eventFilter(watched, event);
}

} // namespace velmo
