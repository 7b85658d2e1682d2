#include "panels/welcome/WelcomeView.h"

#include "panels/welcome/PermissionRow.h"
#include "panels/welcome/PermissionWords.h"
#include "panels/welcome/Permissions.h"
#include "platform/PlatformWords.h"
#include "ui/Button.h"
#include "ui/Label.h"
#include "ui/LogoMark.h"
#include "ui/Painting.h"
#include "ui/Rule.h"
#include "ui/SymbolLabel.h"
#include "ui/Theme.h"
#include "ui/Type.h"

#include <QGuiApplication>
#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

#include <utility>

namespace velmo {

namespace {

constexpr int kLogo = 68;
constexpr int kSide = 44;
constexpr int kTop = 36;
constexpr int kChalkRoom = 18;
constexpr int kStartWidth = 220;
constexpr int kLookEvery = 2000; // ms
constexpr double kCardRadius = 14;

using Pane = Permissions::Pane;
using Media = Permissions::Media;

class Card final : public QWidget {
protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        Painting::roundedBox(painter, rect(), kCardRadius, Theme::surface, Theme::border);
    }
};

QLabel* centered(QLabel* label) {
    label->setAlignment(Qt::AlignCenter);
    return label;
}

QLayout* makeNote() {
    auto* row = new QHBoxLayout;
    row->setSpacing(10);
    row->addWidget(new SymbolLabel(QStringLiteral("lock.shield"), 16, Theme::mint), 0, Qt::AlignTop);
    row->addWidget(
        makeWrappedLabel(QString::fromUtf8(PlatformWords::kStaysHere.here), TextStyle::caption, Theme::muted), 1);
    return row;
}

} // namespace

WelcomeView::WelcomeView(Permissions& permissions, std::function<void()> onDone, QWidget* parent)
    : QWidget(parent), permissions_(permissions),
      screen_(
          new PermissionRow({QStringLiteral("rectangle.dashed.badge.record"), QStringLiteral("Grabación de pantalla"),
                             QString::fromUtf8(PlatformWords::kMayAskToReopen.here)})),
      camera_(new PermissionRow(
          {QStringLiteral("video.fill"), QStringLiteral("Cámara"), QStringLiteral("Para tu burbuja de video.")})),
      microphone_(new PermissionRow(
          {QStringLiteral("mic.fill"), QStringLiteral("Micrófono"), QStringLiteral("Para tu voz.")})) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(kSide, kTop, kSide, 16);
    column->setSpacing(0);
    column->addWidget(new LogoMark(kLogo), 0, Qt::AlignHCenter);
    column->addSpacing(14);
    QLabel* title = makeLabel(QStringLiteral("Bienvenido a Velmo Studio"), TextStyle::display, Theme::sand);
    title->setFont(Theme::headline(26));
    column->addWidget(centered(title));
    column->addSpacing(kChalkRoom);
    column->addWidget(centered(makeLabel(QStringLiteral("Su quadrel digital interactiva · Escriba, explique y grabe."),
                                         TextStyle::body, Theme::muted)));
    column->addStretch(3);
    column->addWidget(
        makeWrappedLabel(QString::fromUtf8(PlatformWords::kSystemNeedsPermission.here), TextStyle::body, Theme::sand));
    column->addSpacing(10);
    column->addWidget(makeRows());
    column->addSpacing(14);
    column->addLayout(makeNote());
    column->addStretch(3);
    auto* start = new Button(ButtonStyle::primaryLarge, QStringLiteral("Empezar"));
    start->setFixedWidth(Type::scaled(kStartWidth) + 2 * Button::kRoom);
    connect(start, &Button::clicked, this, std::move(onDone));
    column->addWidget(start, 0, Qt::AlignHCenter);

    connect(screen_, &PermissionRow::acted, this, [this] { permissions_.requestScreen(); });
    connect(camera_, &PermissionRow::acted, this, [this] { permissions_.request(Media::video); });
    connect(microphone_, &PermissionRow::acted, this, [this] { permissions_.request(Media::audio); });
    connect(&permissions_, &Permissions::changed, this, &WelcomeView::showStates);
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
        if (state == Qt::ApplicationActive && isVisible()) {
            permissions_.refresh();
        }
    });
    plugged_.setInterval(kLookEvery);
    connect(&plugged_, &QTimer::timeout, this, [this] { permissions_.refresh(); });
    showStates();
}

QWidget* WelcomeView::makeRows() {
    auto* card = new Card;
    auto* column = new QVBoxLayout(card);
    column->setContentsMargins(1, 0, 1, 0);
    column->setSpacing(0);
    column->addWidget(screen_);
    column->addWidget(new Rule);
    column->addWidget(camera_);
    column->addWidget(new Rule);
    column->addWidget(microphone_);
    return card;
}

void WelcomeView::showStates() {
    screen_->show(PermissionWords::screen(permissions_.screen(), permissions_.hasSettings(Pane::screen)));
    camera_->show(PermissionWords::device(Media::video, permissions_.camera(), permissions_.finding(Media::video),
                                          permissions_.hasSettings(Pane::camera)));
    microphone_->show(PermissionWords::device(Media::audio, permissions_.microphone(),
                                              permissions_.finding(Media::audio),
                                              permissions_.hasSettings(Pane::microphone)));
}

void WelcomeView::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    permissions_.refresh();
    plugged_.start();
}

void WelcomeView::hideEvent(QHideEvent* event) {
    plugged_.stop();
    QWidget::hideEvent(event);
}

} // namespace velmo
