#include "panels/CountdownWindow.h"

#include "ui/Painting.h"
#include "ui/ScreenPlace.h"
#include "ui/Theme.h"
#include "ui/Type.h"

#include <QCoroSignal>
#include <QFontMetricsF>
#include <QPaintEvent>
#include <QPainter>

#include <chrono>
#include <cmath>

namespace velmo {

namespace {

constexpr double kDisc = 200;
constexpr double kRing = 7;
constexpr double kHintGap = 18;
constexpr double kHintWidth = 240;
constexpr double kHintHeight = 32;
constexpr int kNumberIn = 180;
constexpr std::chrono::seconds kLongest{10}; // far beyond three ticks: a lost timer must not hold a session

} // namespace

CountdownWindow::CountdownWindow(MainTimers& timers)
    : FloatingPanel(PanelLevel::countdown, {0, std::nullopt}), timers_(timers),
      number_(this, kNumberIn, QEasingCurve::OutCubic, [this] { update(disc().toAlignedRect()); }) {
    setWindowTitle(QStringLiteral("Velmo Studio · cuenta regresiva"));
    setCursor(Qt::PointingHandCursor);
    ring_.setStartValue(1.0);
    ring_.setEndValue(0.0);
    ring_.setDuration(1000);
    connect(&ring_, &QVariantAnimation::valueChanged, this, [this] { update(disc().toAlignedRect()); });
}

CountdownWindow::~CountdownWindow() = default;

QCoro::Task<void> CountdownWindow::run(Screen screen) {
    begin(ScreenPlace::frame(screen));
    co_await qCoro(this, &CountdownWindow::finished, kLongest);
    end();
}

void CountdownWindow::begin(const QRect& place) {
    countdown_.emplace(
        timers_, [this] { beginNumber(); }, [this] { end(); });
    setGeometry(place);
    show();
    beginNumber();
}

void CountdownWindow::beginNumber() {
    setAccessibleName(QString::number(countdown_->n()));
    ring_.stop();
    ring_.start();
    number_.jump(0);
    number_.moveTo(1);
    update();
}

void CountdownWindow::end() {
    if (isVisible()) {
        ring_.stop();
        hide();
        emit finished();
    }
}

void CountdownWindow::mousePressEvent(QMouseEvent*) {
    if (countdown_) {
        countdown_->skip();
    }
}

QRectF CountdownWindow::disc() const {
    return QRectF(std::round((width() - kDisc) / 2), std::round((height() - kDisc) / 2), kDisc, kDisc);
}

QRectF CountdownWindow::hint() const {
    const QRectF above = disc();
    const double width = kHintWidth * Type::scale();
    return QRectF(above.center().x() - width / 2, above.bottom() + kHintGap, width, kHintHeight * Type::scale());
}

QPainterPath CountdownWindow::outline() const {
    QPainterPath path;
    path.addEllipse(disc());
    path.addRoundedRect(hint(), hint().height() / 2, hint().height() / 2);
    return path;
}

void CountdownWindow::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.fillRect(event->rect(), Theme::withOpacity(Theme::navyDeep, 0.62));
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.setRenderHint(QPainter::Antialiasing);
    paintDisc(painter);
    if (countdown_) {
        paintNumber(painter);
    }
    QFont font = Type::font(TextStyle::label);
    font.setPixelSize(Type::scaled(18));
    painter.setFont(font);
    painter.setPen(Theme::sand);
    painter.drawText(hint(), Qt::AlignCenter, QStringLiteral("Clic para empezar ya"));
}

void CountdownWindow::paintDisc(QPainter& painter) const {
    const QRectF box = disc();
    painter.setPen(Qt::NoPen);
    painter.setBrush(Theme::withOpacity(Theme::navy, 0.92));
    painter.drawEllipse(box);
    const QRectF line = box.adjusted(kRing / 2 + 1, kRing / 2 + 1, -kRing / 2 - 1, -kRing / 2 - 1);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Theme::withOpacity(Theme::border, 0.14), kRing));
    painter.drawEllipse(line);
    const double left = ring_.currentValue().toDouble();
    if (left > 0) {
        painter.setPen(QPen(Theme::skyBright, kRing, Qt::SolidLine, Qt::RoundCap));
        painter.drawArc(line, 90 * 16, static_cast<int>(std::lround(-left * 360 * 16)));
    }
}

void CountdownWindow::paintNumber(QPainter& painter) const {
    const QFont font = Type::font(TextStyle::countdown);
    const QFontMetricsF metrics(font);
    const QString text = QString::number(countdown_->n());
    painter.save();
    painter.setOpacity(number_.value());
    const double scale = 1.15 - 0.15 * number_.value();
    painter.translate(disc().center());
    painter.scale(scale, scale);
    painter.setFont(font);
    painter.setPen(Theme::sand);
    painter.drawText(QPointF(-metrics.horizontalAdvance(text) / 2, std::round(metrics.capHeight() / 2)), text);
    painter.restore();
}

} // namespace velmo
