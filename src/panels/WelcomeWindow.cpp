#include "panels/WelcomeWindow.h"

#include "panels/welcome/WelcomeView.h"
#include "ui/Button.h"
#include "ui/ChalkBoard.h"
#include "ui/Theme.h"

#include <QPainter>
#include <QPainterPath>
#include <QVBoxLayout>

#include <utility>

namespace velmo {

namespace {

constexpr int kWidth = 620;
constexpr int kHeight = 600;
constexpr double kRadius = 16;
constexpr int kCloseFromEdge = 14;
constexpr double kChalkY = 150; ///< under the title
constexpr double kChalkWidth = 170;

} // namespace

WelcomeWindow::WelcomeWindow(Permissions::Services services, Prefs& prefs, std::function<void()> onDone)
    : DialogWindow({Theme::bg, kRadius, Elevation::floating}), permissions_(std::move(services)),
      close_(new Button(ButtonStyle::icon)) {
    setWindowTitle(QStringLiteral("Bienvenido a Velmo Studio"));
    setAccessibleName(windowTitle());
    // The desktop's settings come up in front of it.
    setWindowFlag(Qt::WindowStaysOnTopHint, false);
    const QMargins around = contentsMargins();
    setFixedSize(QSize(kWidth, kHeight).grownBy(around));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(new WelcomeView(permissions_, [this, &prefs, done = std::move(onDone)] {
        prefs.onboarded = true;
        hide();
        if (done) {
            done();
        }
    }));
    close_->setParent(this);
    close_->setSymbol(QStringLiteral("xmark"));
    close_->setAccessibleName(QStringLiteral("Cerrar"));
    close_->setToolTip(QStringLiteral("Cerrar"));
    close_->resize(close_->sizeHint());
    connect(close_, &Button::clicked, this, &QDialog::reject);
}

WelcomeWindow::~WelcomeWindow() = default;

void WelcomeWindow::resizeEvent(QResizeEvent* event) {
    DialogWindow::resizeEvent(event);
    close_->move(card().right() + 1 - kCloseFromEdge - close_->width(), card().top() + kCloseFromEdge);
    close_->raise();
}

void WelcomeWindow::paintEvent(QPaintEvent* event) {
    DialogWindow::paintEvent(event);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF box = card();
    QPainterPath inside;
    inside.addRoundedRect(box.adjusted(1, 1, -1, -1), kRadius - 1, kRadius - 1);
    ChalkBoard::paintTop(painter, inside, box);
    ChalkBoard::paintStroke(painter, QPointF(box.center().x() - kChalkWidth / 2, box.top() + kChalkY), kChalkWidth);
}

} // namespace velmo
