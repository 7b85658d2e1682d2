#include "surfaces/DrawingPalette.h"

#include "surfaces/ScreenDrawing.h"
#include "surfaces/internal/PaletteDot.h"
#include "ui/Button.h"
#include "ui/Painting.h"
#include "ui/ScreenPlace.h"
#include "ui/Theme.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QPainter>

#include <algorithm>
#include <array>
#include <span>

namespace velmo {

namespace {

constexpr int kSide = 8;
constexpr int kGap = 2;
constexpr int kToolSide = 34;
constexpr int kDividerHeight = 24;
constexpr int kBelowTop = 12;

constexpr std::array kToolGroups = {
    std::array{DrawingTool::pen, DrawingTool::laser},
    std::array{DrawingTool::rect, DrawingTool::line},
    std::array{DrawingTool::eraser, DrawingTool::eraser},
}; // first and last of each

constexpr std::array kColorNames = {"Rojo", "Amarillo", "Verde", "Celeste", "Azul", "Rosa", "Blanco", "Azul noche"};
static_assert(kColorNames.size() == ScreenDrawing::colors.size());
constexpr double kColorDot = 18;

struct WidthName {
    const char* name;
    double dot;
};
constexpr std::array kWidthNames = {WidthName{"Trazo fino", 4}, WidthName{"Trazo medio", 7},
                                    WidthName{"Trazo grueso", 11}};
static_assert(kWidthNames.size() == ScreenDrawing::widths.size());

class Divider final : public QWidget {
public:
    Divider() { setFixedSize(2 * (kSide - kGap) + 1, kDividerHeight); }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter(this).fillRect(QRectF(kSide - kGap, 0, 1, height()), Theme::border);
    }
};

Button* makeButton(const QString& symbol, const QString& help) {
    auto* button = new Button(ButtonStyle::bar);
    button->setFixedSize(kToolSide, kToolSide);
    button->setSymbol(symbol);
    button->setToolTip(help);
    button->setAccessibleName(help);
    return button;
}

} // namespace

DrawingPalette::DrawingPalette(ScreenDrawing& drawing)
    : FloatingPanel(PanelLevel::bar, {}), drawing_(drawing), tools_(new QButtonGroup(this)),
      colors_(new QButtonGroup(this)), widths_(new QButtonGroup(this)) {
    setWindowTitle(QStringLiteral("Velmo Studio · paleta de dibujo"));
    setAccessibleName(QStringLiteral("Paleta de dibujo"));
    setMovableByBackground(true);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(kSide, 0, kSide, 0);
    row->setSpacing(kGap);
    addTools(*row);
    addColors(*row);
    addWidths(*row);
    addActions(*row);
    showTip();
    connect(&drawing_, &ScreenDrawing::tipChanged, this, &DrawingPalette::showTip);
}

DrawingPalette::~DrawingPalette() = default;

void DrawingPalette::addTools(QHBoxLayout& row) {
    for (const auto& [first, last] : kToolGroups) {
        for (int i = static_cast<int>(first); i <= static_cast<int>(last); ++i) {
            const auto tool = static_cast<DrawingTool>(i);
            // Beside a scribbling pen, the fountain pen is told apart by its feather.
            const QString icon = tool == DrawingTool::fountain ? QStringLiteral("feather") : symbol(tool);
            Button* button = makeButton(icon, title(tool));
            button->setCheckable(true);
            tools_->addButton(button, i);
            row.addWidget(button);
        }
        row.addWidget(new Divider);
    }
    connect(tools_, &QButtonGroup::idClicked, this, [this](int id) { drawing_.setTool(static_cast<DrawingTool>(id)); });
}

void DrawingPalette::addColors(QHBoxLayout& row) {
    for (std::size_t i = 0; i < ScreenDrawing::colors.size(); ++i) {
        auto* dot = new PaletteDot(PaletteDot::Choice::color, QString::fromUtf8(kColorNames[i]),
                                   ScreenDrawing::colors[i], kColorDot);
        colors_->addButton(dot, static_cast<int>(i));
        row.addWidget(dot);
    }
    row.addWidget(new Divider);
    connect(colors_, &QButtonGroup::idClicked, this, [this](int id) { drawing_.setColorIndex(id); });
}

void DrawingPalette::addWidths(QHBoxLayout& row) {
    for (std::size_t i = 0; i < kWidthNames.size(); ++i) {
        auto* dot = new PaletteDot(PaletteDot::Choice::width, QString::fromUtf8(kWidthNames[i].name), Theme::sand,
                                   kWidthNames[i].dot);
        widths_->addButton(dot, static_cast<int>(i));
        row.addWidget(dot);
    }
    row.addWidget(new Divider);
    connect(widths_, &QButtonGroup::idClicked, this, [this](int id) { drawing_.setWidthIndex(id); });
}

void DrawingPalette::addActions(QHBoxLayout& row) {
    Button* undo = makeButton(QStringLiteral("arrow.uturn.backward"), QStringLiteral("Deshacer"));
    connect(undo, &Button::clicked, this, [this] { drawing_.undo(); });
    row.addWidget(undo);
    Button* clear = makeButton(QStringLiteral("trash"), QStringLiteral("Borrar todo"));
    connect(clear, &Button::clicked, this, [this] { drawing_.clear(); });
    row.addWidget(clear);
    row.addSpacing(kSide - kGap);

    done_ = new Button(ButtonStyle::primary, QStringLiteral("Listo"), this);
    done_->setFocusPolicy(Qt::NoFocus);
    done_->setToolTip(QStringLiteral("Volver a usar las apps (los dibujos siguen visibles)"));
    done_->setAccessibleName(QStringLiteral("Listo"));
    done_->resize(done_->sizeHint());
    connect(done_, &Button::clicked, this, [this] { drawing_.finishDrawing(); });
    donePlace_ = new QWidget;
    donePlace_->setFixedSize(done_->shape().size());
    row.addWidget(donePlace_);
}

void DrawingPalette::showTip() {
    tools_->button(static_cast<int>(drawing_.tool()))->setChecked(true);
    colors_->button(drawing_.colorIndex())->setChecked(true);
    widths_->button(drawing_.widthIndex())->setChecked(true);
}

void DrawingPalette::placeOn(const Screen& screen) {
    const QRect free = ScreenPlace::visibleFrame(screen);
    const int width = layout()->sizeHint().width();
    setCardGeometry(QRect(free.x() + (free.width() - width) / 2, free.y() + kBelowTop, width, kHeight));
}

void DrawingPalette::keepClearOf(const QRect& area) {
    const QRect card = cardGeometry();
    if (card.intersects(area)) {
        setCardGeometry(QRect(QPoint(card.x(), area.bottom() + 1 + kBelowTop), card.size()));
    }
}

void DrawingPalette::keepInside(const QRect& frame) {
    QRect card = cardGeometry();
    card.moveRight(std::min(card.right(), frame.right()));
    card.moveBottom(std::min(card.bottom(), frame.bottom()));
    card.moveLeft(std::max(card.left(), frame.left()));
    card.moveTop(std::max(card.top(), frame.top()));
    setCardGeometry(card);
}

void DrawingPalette::resizeEvent(QResizeEvent* event) {
    FloatingPanel::resizeEvent(event);
    layout()->activate();
    done_->move(donePlace_->pos() - done_->shape().topLeft());
    done_->raise();
}

} // namespace velmo
