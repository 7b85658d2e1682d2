#include "ui/TextField.h"

#include "ui/Painting.h"
#include "ui/PlainText.h"
#include "ui/Theme.h"
#include "ui/Type.h"

#include <QPainter>
#include <QValidator>

#include <utility>

namespace velmo {

namespace {

constexpr double kRadius = 9;
constexpr int kPadding = 8; // the line edit itself adds two at each side

/// Everything is acceptable once it is plain; also what is pasted comes through here.
class Plain final : public QValidator {
public:
    using QValidator::QValidator;
    State validate(QString& text, int& cursor) const override {
        QString plain = PlainText::singleLine(text, TextField::kMostText);
        if (plain != text) {
            cursor = static_cast<int>(PlainText::singleLine(text.left(cursor), TextField::kMostText).size());
            text = std::move(plain);
        }
        return Acceptable;
    }
};

} // namespace

TextField::TextField(const QString& placeholder, int height, QWidget* parent) : QLineEdit(parent) {
    setFrame(false);
    setValidator(new Plain(this));
    setPlaceholderText(placeholder);
    setFont(Type::font(TextStyle::body));
    setFixedHeight(Type::heightFor(height) + 2 * kRoom);
    setTextMargins(kRoom + kPadding, 0, kRoom + kPadding, 0);
    setAttribute(Qt::WA_Hover);
    QPalette colors = palette();
    colors.setColor(QPalette::Text, Theme::sand);
    colors.setColor(QPalette::PlaceholderText, Theme::muted);
    colors.setColor(QPalette::Highlight, Theme::selection());
    colors.setColor(QPalette::HighlightedText, Theme::sand);
    setPalette(colors);
    // The shape is painted here. The palette's base would not do: a style sheet of the application paints over it.
    setStyleSheet(QStringLiteral("QLineEdit { background: transparent; border: none; }"));
}

void TextField::setBad(bool bad) {
    bad_ = bad;
    update();
}

void TextField::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF box = rect().marginsRemoved(QMargins(kRoom, kRoom, kRoom, kRoom));
    const QColor rest = underMouse() ? Theme::strongBorder() : Theme::border;
    Painting::roundedBox(painter, box, kRadius, Theme::field(), bad_ ? Qt::transparent : rest);
    if (hasFocus()) {
        Painting::focusRing(painter, box, kRadius);
    }
    if (bad_) { // seen while it is being corrected, too
        Painting::roundedBox(painter, box, kRadius, Qt::transparent, Theme::withOpacity(Theme::rec, 0.8));
    }
    painter.end();
    QLineEdit::paintEvent(event);
}

} // namespace velmo
