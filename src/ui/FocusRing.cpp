#include "ui/FocusRing.h"

#include "ui/Painting.h"

#include <QAbstractScrollArea>
#include <QFocusEvent>
#include <QPainter>

namespace velmo {

namespace {

constexpr int kBand = 4;

class Mark final : public QWidget {
public:
    Mark(double radius, QWidget* parent) : QWidget(parent), radius_(radius) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        Painting::focusRing(painter, QRectF(rect()).adjusted(kBand, kBand, -kBand, -kBand), radius_);
    }

private:
    const double radius_;
};

bool scrolls(const QWidget& widget) {
    const QWidget* viewport = widget.parentWidget();
    return viewport != nullptr && qobject_cast<QAbstractScrollArea*>(viewport->parentWidget()) != nullptr;
}

} // namespace

FocusRing::FocusRing(QWidget& of, double radius, QMargins inset)
    : QObject(&of), of_(of), radius_(radius), inset_(inset) {
    of.installEventFilter(this);
}

FocusRing::~FocusRing() {
    hide();
}

bool FocusRing::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::FocusIn: {
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason) {
            byKeyboard_ = reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason;
        }
        if (watched == &of_ && byKeyboard_) {
            show();
        }
        break;
    }
    case QEvent::FocusOut:
    case QEvent::Hide:
        if (watched == &of_) {
            hide();
        }
        break;
    case QEvent::Move:
    case QEvent::Resize:
        place();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void FocusRing::show() {
    hide();
    QWidget* host = of_.parentWidget();
    if (host == nullptr) {
        return;
    }
    while (!host->isWindow() && !scrolls(*host)) { // beyond what would cut the mark off
        host->installEventFilter(this);
        between_.push_back(host);
        host = host->parentWidget();
    }
    mark_ = new Mark(radius_, host);
    place();
    mark_->show();
    mark_->raise();
}

void FocusRing::hide() {
    for (const QPointer<QWidget>& each : between_) {
        if (each) {
            each->removeEventFilter(this);
        }
    }
    between_.clear();
    delete mark_;
}

void FocusRing::place() {
    if (mark_) {
        const QRect shape = of_.rect().marginsRemoved(inset_);
        const QRect there(of_.mapTo(mark_->parentWidget(), shape.topLeft()), shape.size());
        mark_->setGeometry(there.adjusted(-kBand, -kBand, kBand, kBand));
    }
}

} // namespace velmo
