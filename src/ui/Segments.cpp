#include "ui/Segments.h"

#include "ui/FocusRing.h"
#include "ui/Painting.h"
#include "ui/Symbol.h"
#include "ui/Theme.h"
#include "ui/Type.h"

#include <QAbstractButton>
#include <QFontMetricsF>
#include <QHBoxLayout>
#include <QPainter>

#include <cmath>
#include <utility>

namespace velmo {

namespace {

constexpr int kHeight = 34;
constexpr int kPadding = 3;
constexpr int kBeside = 8; ///< at each side of a title
constexpr int kIcon = 12;
constexpr int kGap = 7;
constexpr double kRadius = 9;
constexpr double kSegmentRadius = 7;

class Segment final : public QAbstractButton {
public:
    Segment(const QString& title, QString symbol) : symbol_(std::move(symbol)) {
        setText(title);
        setCursor(Qt::PointingHandCursor);
        setAttribute(Qt::WA_Hover);
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        new FocusRing(*this, kSegmentRadius);
    }

    QSize sizeHint() const override {
        const QFontMetricsF metrics(font(true));
        const int icon = symbol_.isEmpty() ? 0 : kIcon + kGap;
        return {static_cast<int>(std::ceil(metrics.horizontalAdvance(text()))) + icon + 2 * kBeside,
                Type::heightFor(kHeight) - 2 * kPadding};
    }
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        const bool lively = isEnabled() && (isChecked() || underMouse());
        if (isChecked()) {
            Painting::roundedBox(painter, rect(), kSegmentRadius, Theme::rowHover(), Theme::strongBorder());
        }
        const QColor ink = !isEnabled() ? Theme::disabledText() : lively ? Theme::sand : Theme::muted;
        const QFontMetricsF metrics(font(isChecked()));
        const double icon = symbol_.isEmpty() ? 0 : kIcon + kGap;
        double x = std::round((width() - metrics.horizontalAdvance(text()) - icon) / 2);
        if (!symbol_.isEmpty()) {
            Symbol::paint(painter, QRectF(x, 0, kIcon, height()), symbol_, kIcon, ink);
            x += icon;
        }
        painter.setFont(font(isChecked()));
        painter.setPen(ink);
        painter.drawText(QPointF(x, std::round(height() / 2.0 + metrics.capHeight() / 2)), text());
    }

private:
    static QFont font(bool checked) {
        QFont font = Type::font(TextStyle::chip);
        font.setWeight(checked ? QFont::DemiBold : QFont::Medium);
        return font;
    }

    const QString symbol_;
};

} // namespace

Segments::Segments(const QString& name, const std::vector<Choice>& choices, QWidget* parent)
    : ChoiceGroup(name, parent) {
    setFixedHeight(Type::heightFor(kHeight));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(kPadding, kPadding, kPadding, kPadding);
    row->setSpacing(2);
    for (const Choice& choice : choices) {
        auto* segment = new Segment(choice.title, choice.symbol);
        add(choice.id, segment);
        row->addWidget(segment);
    }
}

void Segments::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    Painting::roundedBox(painter, rect(), kRadius, Theme::field(), Theme::border);
}

} // namespace velmo
