#include "surfaces/internal/PrompterPanel.h"

#include "surfaces/Teleprompter.h"
#include "surfaces/internal/PrompterControls.h"
#include "surfaces/internal/PrompterView.h"
#include "ui/Symbol.h"
#include "ui/Theme.h"

#include <QPainter>
#include <QVBoxLayout>

#include <cmath>

namespace velmo {

namespace {

constexpr int kMarker = 11;
constexpr int kMarkerLeft = 6;
constexpr int kAbove = 6;
constexpr int kTextLeft = 14;
constexpr int kSide = 10;

FloatingPanel::Floor floorOfPrompter() {
    return {16, Elevation::floating, QColor::fromRgbF(0.04F, 0.11F, 0.09F, 0.86F),
            QColor::fromRgbF(0.5F, 0.9F, 0.72F, 0.25F)};
}

} // namespace

PrompterPanel::PrompterPanel(Teleprompter& prompter, const Prefs& prefs)
    : FloatingPanel(PanelLevel::bar, floorOfPrompter()), text_(new PrompterView) {
    setWindowTitle(QStringLiteral("Velmo Studio · guion"));
    setMovableByBackground(true);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, kAbove, 0, 6);
    column->setSpacing(2);
    auto* textRow = new QHBoxLayout;
    textRow->setContentsMargins(kTextLeft, 0, kSide, 0);
    textRow->addWidget(text_);
    column->addLayout(textRow, 1);
    auto* controlsRow = new QHBoxLayout;
    controlsRow->setContentsMargins(kSide, 0, kSide, 0);
    controlsRow->addWidget(new PrompterControls(prompter, prefs));
    column->addLayout(controlsRow);
    connect(text_, &PrompterView::pressed, &prompter, &Teleprompter::togglePlay);
}

int PrompterPanel::heightFor(double fontSize) {
    return static_cast<int>(std::lround(fontSize * 1.35 * 4 + 54));
}

void PrompterPanel::setFontSize(double fontSize) {
    fontSize_ = fontSize;
    update();
}

void PrompterPanel::paintEvent(QPaintEvent* event) {
    FloatingPanel::paintEvent(event);
    const QPointF corner = card().topLeft();
    const double middle = kAbove + PrompterView::markerY(fontSize_);
    QPainter painter(this);
    Symbol::paint(painter, QRectF(corner + QPointF(kMarkerLeft, middle - kMarker / 2.0), QSizeF(kMarker, kMarker)),
                  QStringLiteral("arrowtriangle.right.fill"), kMarker, Theme::skyBright);
}

} // namespace velmo
