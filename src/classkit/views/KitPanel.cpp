#include "classkit/views/KitPanel.h"

#include "classkit/ClassKit.h"
#include "classkit/views/internal/KitRow.h"
#include "session/RecorderController.h"
#include "ui/Button.h"
#include "ui/FittingScrollArea.h"
#include "ui/Label.h"
#include "ui/ScreenPlace.h"
#include "ui/Symbol.h"
#include "ui/Theme.h"
#include "ui/Type.h"

#include <QGuiApplication>
#include <QHBoxLayout>
#include <QPainter>
#include <QScreen>
#include <QVBoxLayout>

#include <algorithm>
#include <vector>

namespace velmo {

namespace {

constexpr int kAbove = 4;
constexpr int kHead = 34;
constexpr int kFoot = 26;
constexpr int kMostHeight = 460;
constexpr int kFromEdge = 20; // of the screen
constexpr int kSide = 20;
constexpr int kFootText = 11;
constexpr int kIcon = 16;

class HeadIcon final : public QWidget {
public:
    HeadIcon() { setFixedSize(kIcon, kIcon); }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        Symbol::paint(painter, rect(), QStringLiteral("books.vertical.fill"), kIcon, Theme::mint);
    }
};

int aroundRows() {
    return kAbove + Type::heightFor(kHead) + Type::heightFor(kFoot);
}

QWidget* makeFoot() {
    QLabel* foot =
        makeLabel(QStringLiteral("Al abrir, queda como capítulo del video."), TextStyle::caption, Theme::muted);
    QFont font = foot->font();
    font.setPixelSize(Type::scaled(kFootText));
    foot->setFont(font);
    foot->setFixedHeight(Type::heightFor(kFoot));
    foot->setContentsMargins(kSide, 0, kSide, 6);
    return foot;
}

} // namespace

KitPanel::KitPanel(ClassKit& kit, RecorderController& recorder, const Screens& screens)
    : FloatingPanel(PanelLevel::bar, {}), kit_(kit), recorder_(recorder), screens_(screens) {
    setWindowTitle(QStringLiteral("Velmo Studio · material"));
    setAccessibleName(QStringLiteral("Material de la clase"));
    setMovableByBackground(true);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, kAbove, 0, 0);
    column->setSpacing(0);
    column->addWidget(makeHead());
    column->addWidget(scroll_ = new FittingScrollArea(makeRows()), 1);
    scroll_->setFixedWidth(Type::scaled(kWidth));
    column->addWidget(makeFoot());
    connect(&kit_, &ClassKit::itemsChanged, this, [this] {
        if (visible_) { // else the next `show` reads them
            fillRows();
        }
    });
}

KitPanel::~KitPanel() = default;

QWidget* KitPanel::makeHead() {
    auto* head = new QWidget;
    head->setFixedHeight(Type::heightFor(kHead));
    auto* row = new QHBoxLayout(head);
    row->setContentsMargins(kSide - 2, 0, 11, 0);
    row->setSpacing(10);
    row->addWidget(new HeadIcon);
    row->addWidget(makeLabel(QStringLiteral("Material de la clase"), TextStyle::strong, Theme::sand), 1);
    auto* close = new Button(ButtonStyle::icon);
    close->setFocusPolicy(Qt::NoFocus);
    close->setSymbol(QStringLiteral("xmark"));
    close->setSubdued(true);
    close->setToolTip(QStringLiteral("Ocultar"));
    close->setAccessibleName(QStringLiteral("Ocultar"));
    connect(close, &Button::clicked, this, &KitPanel::hide);
    row->addWidget(close);
    return head;
}

QWidget* KitPanel::makeRows() {
    auto* contents = new QWidget;
    auto* column = new QVBoxLayout(contents);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    rows_ = new QVBoxLayout;
    rows_->setSpacing(0);
    column->addLayout(rows_);
    column->addStretch();
    return contents;
}

void KitPanel::fillRows() {
    while (QLayoutItem* const taken = rows_->takeAt(0)) {
        taken->widget()->hide();
        taken->widget()->deleteLater(); // it may be the one whose click is being handled
        delete taken;
    }
    for (const KitItem& item : kit_.items()) {
        auto* row = new KitRow(item.symbol(), item.title);
        connect(row, &KitRow::clicked, this, [this, item] { kit_.open(item); });
        rows_->addWidget(row);
    }
}

int KitPanel::heightFor(std::size_t items) {
    const std::size_t rows = std::min<std::size_t>(items, kMostHeight); // no overflow
    return std::min(KitRow::rowHeight() * static_cast<int>(rows) + aroundRows(), kMostHeight);
}

std::optional<Screen> KitPanel::screen() const {
    if (recorder_.recordingScreen()) {
        return recorder_.recordingScreen();
    }
    const std::vector<Screen> all = screens_.all();
    return all.empty() ? std::nullopt : std::optional(all.front());
}

void KitPanel::place() {
    const auto target = screen();
    const QRect free =
        target ? ScreenPlace::visibleFrame(*target) : QGuiApplication::primaryScreen()->availableGeometry();
    const int width = Type::scaled(kWidth);
    const int height = heightFor(kit_.items().size());
    scroll_->setMostHeight(height - aroundRows());
    QPoint corner(free.x() + free.width() - width - kFromEdge, free.y() + (free.height() - height) / 2);
    if (visible_ && cardGeometry().intersects(free)) {
        corner = cardGeometry().topLeft();
    }
    setCardGeometry(QRect(corner, QSize(width, height)));
}

void KitPanel::show() {
    if (kit_.items().empty()) {
        recorder_.flashMessage(QStringLiteral("Prepara el material en el panel de grabación"));
        return;
    }
    fillRows();
    place();
    QWidget::show();
    setVisibleNow(true);
}

void KitPanel::hide() {
    QWidget::hide();
    setVisibleNow(false);
}

void KitPanel::toggle() {
    if (visible_) {
        hide();
    } else {
        show();
    }
}

void KitPanel::setVisibleNow(bool visible) {
    if (visible != visible_) {
        visible_ = visible;
        emit visibleChanged();
    }
}

} // namespace velmo
