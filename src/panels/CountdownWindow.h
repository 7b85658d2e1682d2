#pragma once

#include "panels/Countdown.h"
#include "session/Collaborators.h"
#include "ui/Fade.h"
#include "ui/FloatingPanel.h"

#include <QPixmap>
#include <QVariantAnimation>

#include <optional>

namespace velmo {

/// The countdown over the whole screen to be recorded; a click anywhere ends it. Main thread.
class CountdownWindow final : public FloatingPanel, public CountdownPort {
    Q_OBJECT
public:
    /// Borrowed.
    explicit CountdownWindow(MainTimers& timers);
    ~CountdownWindow() override;

    /// One at a time.
    QCoro::Task<void> run(Screen screen) override;

signals:
    void finished();

protected:
    /// Without a compositing manager the veil would hide the screen: then only the disc and the hint are seen.
    QPainterPath outline() const override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    void begin(const QRect& place);
    void beginNumber();
    void end();
    QRectF disc() const;
    QRectF hint() const;
    void paintDisc(QPainter& painter) const;
    void paintNumber(QPainter& painter) const;

    MainTimers& timers_;
    std::optional<Countdown> countdown_;
    QVariantAnimation ring_;
    Fade number_;
};

} // namespace velmo
