#include "panels/WelcomeWindow.h"

#include "panels/welcome/WelcomeView.h"
#include "ui/Button.h"
#include "ui/ChalkBoard.h"
#include "ui/FittingScrollArea.h"
#include "ui/Theme.h"
#include "ui/Type.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>
#include <QScreen>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace velmo {

namespace {

constexpr int kWidth = 620;
constexpr int kHeight = 600;
constexpr int kBesideScreen = 12;
constexpr double kRadius = 16;
constexpr int kCloseFromEdge = 14;
constexpr int kAboveTitle = 118;
constexpr double kChalkWidth = 170;

} // namespace

WelcomeWindow::WelcomeWindow(Permissions::Services services, Prefs& prefs, std::function<void()> onDone)
    : DialogWindow({Theme::bg, kRadius, Elevation::floating}), permissions_(std::move(services)),
      close_(new Button(ButtonStyle::icon)) {
    setWindowTitle(QStringLiteral("Bienvenido a Velmo Studio"));
    setAccessibleName(windowTitle());
    // The desktop's settings come up in front of it.
    setWindowFlag(Qt::WindowStaysOnTopHint, false);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    auto* view = new WelcomeView(permissions_, [this, &prefs, done = std::move(onDone)] {
        prefs.onboarded = true;
        hide();
        if (done) {
            done();
        }
    });
    column->addWidget(scroll_ = new FittingScrollArea(view));
    connect(scroll_->verticalScrollBar(), &QScrollBar::valueChanged, this, qOverload<>(&QWidget::update));
    const QSize card = cardSize();
    scroll_->setFixedWidth(card.width());
    scroll_->setMostHeight(card.height());
    setFixedSize(card.grownBy(contentsMargins()));
    close_->setParent(this);
    close_->setSymbol(QStringLiteral("xmark"));
    close_->setAccessibleName(QStringLiteral("Cerrar"));
    close_->setToolTip(QStringLiteral("Cerrar"));
    close_->resize(close_->sizeHint());
    connect(close_, &Button::clicked, this, &QDialog::reject);
}

WelcomeWindow::~WelcomeWindow() = default;

/// Larger text has more room where the screen has it; where even the least is too much, the view scrolls.
QSize WelcomeWindow::cardSize() const {
    const int width = Type::scaled(kWidth);
    const int needed = scroll_->widget()->layout()->totalHeightForWidth(width);
    const int free = QGuiApplication::primaryScreen()->availableGeometry().height() - contentsMargins().top() - kBesideScreen;
    return {width, std::min(std::max(Type::scaled(kHeight), needed), free)};
}

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
    const int underTitle = kAboveTitle + Type::lineHeight(TextStyle::display) - scroll_->verticalScrollBar()->value();
    if (underTitle > 0) {
        const QPointF place(box.center().x() - kChalkWidth / 2, box.top() + underTitle);
        ChalkBoard::paintStroke(painter, place, kChalkWidth);
    }
}

} // namespace velmo
