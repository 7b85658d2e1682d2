#include "ui/TextArea.h"

#include "ui/Painting.h"
#include "ui/PlainText.h"
#include "ui/ScrollLook.h"
#include "ui/Theme.h"
#include "ui/Type.h"

#include <QAbstractTextDocumentLayout>
#include <QEvent>
#include <QFontMetricsF>
#include <QMimeData>
#include <QPainter>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace velmo {

namespace {

constexpr double kRadius = 9;
constexpr int kAcross = 7; // the document itself keeps four free
constexpr int kDown = 4;
constexpr int kDocumentMargin = 4;
constexpr int kLeastLines = 3;
constexpr int kMostLines = 8;

class Editor final : public QPlainTextEdit {
protected:
    void insertFromMimeData(const QMimeData* source) override {
        const qsizetype there = document()->characterCount();
        insertPlainText(PlainText::lines(source->text(), std::max<qsizetype>(0, TextArea::kMostText - there)));
        ensureCursorVisible();
    }
};

void dress(QPlainTextEdit& editor) {
    editor.setFrameShape(QFrame::NoFrame);
    editor.setFont(Type::font(TextStyle::body));
    editor.setTabChangesFocus(true);
    editor.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    QPalette colors = editor.palette();
    colors.setColor(QPalette::Text, Theme::sand);
    colors.setColor(QPalette::PlaceholderText, Theme::muted);
    colors.setColor(QPalette::Highlight, Theme::selection());
    colors.setColor(QPalette::HighlightedText, Theme::sand);
    editor.setPalette(colors);
    // The palette's base would not do: a style sheet of the application paints over it.
    editor.setStyleSheet(QStringLiteral("QPlainTextEdit { background: transparent; border: none; }"));
    editor.verticalScrollBar()->setStyleSheet(ScrollLook::sheet());
}

} // namespace

TextArea::TextArea(const QString& placeholder, QWidget* parent) : QWidget(parent), editor_(new Editor) {
    editor_->setAccessibleName(placeholder);
    editor_->setPlaceholderText(placeholder);
    dress(*editor_);
    setFocusProxy(editor_);
    setAttribute(Qt::WA_Hover);
    auto* box = new QVBoxLayout(this);
    box->setContentsMargins(kRoom + kAcross, kRoom + kDown, kRoom + 2, kRoom + kDown);
    box->addWidget(editor_);
    editor_->installEventFilter(this);
    connect(editor_, &QPlainTextEdit::textChanged, this, &TextArea::edited);
    connect(editor_->document()->documentLayout(), &QAbstractTextDocumentLayout::documentSizeChanged, this,
            &TextArea::fit);
    fit();
}

QString TextArea::text() const {
    return editor_->toPlainText();
}

void TextArea::setText(const QString& text) {
    const QSignalBlocker quiet(editor_);
    editor_->setPlainText(PlainText::lines(text, kMostText));
}

void TextArea::fit() {
    const int lines = std::clamp(static_cast<int>(editor_->document()->size().height()), kLeastLines, kMostLines);
    const double line = QFontMetricsF(editor_->font()).lineSpacing();
    setFixedHeight(static_cast<int>(std::ceil(lines * line)) + 2 * (kRoom + kDown + kDocumentMargin));
}

bool TextArea::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) {
        update();
    }
    if (event->type() == QEvent::FocusOut || event->type() == QEvent::Hide) {
        emit left();
    }
    return QWidget::eventFilter(watched, event);
}

void TextArea::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRectF box = rect().marginsRemoved(QMargins(kRoom, kRoom, kRoom, kRoom));
    Painting::roundedBox(painter, box, kRadius, Theme::field(), underMouse() ? Theme::strongBorder() : Theme::border);
    if (editor_->hasFocus()) {
        Painting::focusRing(painter, box, kRadius);
    }
}

} // namespace velmo
