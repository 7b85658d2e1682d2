#include "surfaces/internal/PrompterLayout.h"

#include <QPainter>
#include <QTextLayout>
#include <QTextOption>

#include <algorithm>
#include <cmath>

namespace velmo {

namespace {

constexpr qsizetype kPiece = 1000; ///< characters laid out at a time; many times what a line holds
constexpr QStringView kTab = u"    ";

/// Marks that turn the direction of what follows, until others end it: a line could not be drawn without the text
/// before it.
bool turnsDirection(QChar character) {
    const char16_t code = character.unicode();
    return (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

bool breaksLine(QChar character) {
    switch (character.unicode()) {
    case u'\n':
    case u'\v':
    case u'\f':
    case u'\r':
    case 0x85:
    case QChar::LineSeparator:
    case QChar::ParagraphSeparator:
        return true;
    default:
        return false;
    }
}

QTextOption option(QTextOption::WrapMode wrap, bool rightToLeft) {
    QTextOption chosen;
    chosen.setWrapMode(wrap);
    chosen.setTextDirection(rightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    chosen.setAlignment(rightToLeft ? Qt::AlignRight : Qt::AlignLeft);
    return chosen;
}

double heightOfEmptyLine(const QFont& font) {
    QTextLayout layout(QStringLiteral("X"), font);
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    return line.height();
}

} // namespace

PrompterLayout::PrompterLayout(const QString& script, const QFont& font, double width, double spacing)
    : text_(cleaned(script)), font_(font), width_(width), spacing_(static_cast<int>(std::lround(spacing))),
      emptyHeight_(heightOfEmptyLine(font)) {}

QString PrompterLayout::cleaned(const QString& script) {
    QString text;
    text.reserve(script.size());
    for (qsizetype i = 0; i < script.size(); ++i) {
        const QChar here = script[i];
        const QChar next = i + 1 < script.size() ? script[i + 1] : QChar();
        if (here == u'\r' && next == u'\n') {
            continue;
        }
        if (here.isHighSurrogate() && next.isLowSurrogate()) {
            text.append(here).append(next);
            ++i;
        } else if (here.isSurrogate()) {
            text.append(QChar::ReplacementCharacter);
        } else if (breaksLine(here)) {
            text.append(u'\n');
        } else if (here == u'\t') {
            text.append(kTab);
        } else if (here.category() != QChar::Other_Control && !turnsDirection(here) && !here.isNonCharacter()) {
            text.append(here);
        }
    }
    return text;
}

void PrompterLayout::extend(qsizetype characters) {
    const qsizetype until = std::min(next_ + characters, text_.size());
    while (next_ <= until && !isComplete()) {
        if (paragraphEnd_ < next_) {
            beginParagraph();
        }
        layOutPiece();
    }
}

void PrompterLayout::beginParagraph() {
    const qsizetype found = text_.indexOf(u'\n', next_);
    paragraphEnd_ = found < 0 ? text_.size() : found;
    rightToLeft_ = QStringView(text_).sliced(next_, paragraphEnd_ - next_).isRightToLeft();
}

void PrompterLayout::layOutPiece() {
    const qsizetype size = std::min(paragraphEnd_ - next_, kPiece);
    const bool endsParagraph = next_ + size == paragraphEnd_;
    if (size == 0) {
        addLine(next_, 0, emptyHeight_);
        ++next_;
        return;
    }
    QTextLayout layout(text_.sliced(next_, size), font_);
    layout.setTextOption(option(QTextOption::WrapAtWordBoundaryOrAnywhere, rightToLeft_));
    layout.beginLayout();
    qsizetype done = 0;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width_);
        const qsizetype end = line.textStart() + line.textLength();
        if (end == size && !endsParagraph && done > 0) {
            break; // the next piece begins with this line and has more of it
        }
        addLine(next_ + line.textStart(), line.textLength(), line.height());
        done = end;
    }
    layout.endLayout();
    next_ += done + (next_ + done == paragraphEnd_ ? 1 : 0);
}

void PrompterLayout::addLine(qsizetype start, qsizetype length, double height) {
    lines_.push_back({bottom_, static_cast<std::uint32_t>(start), static_cast<std::uint16_t>(length),
                      static_cast<std::uint16_t>(rightToLeft_)});
    bottom_ += std::ceil(height) + spacing_;
}

std::pair<std::size_t, std::size_t> PrompterLayout::linesBetween(double top, double bottom) const {
    const auto after =
        std::upper_bound(lines_.begin(), lines_.end(), top, [](double y, const Line& line) { return y < line.top; });
    const auto end =
        std::lower_bound(lines_.begin(), lines_.end(), bottom, [](const Line& line, double y) { return line.top < y; });
    const auto first = after == lines_.begin() ? after : after - 1;
    const auto index = [this](auto place) { return static_cast<std::size_t>(place - lines_.begin()); };
    return {std::min(index(first), index(end)), index(end)};
}

std::size_t PrompterLayout::lineOf(qsizetype character) const {
    const auto after =
        std::upper_bound(lines_.begin(), lines_.end(), character,
                         [](qsizetype wanted, const Line& line) { return wanted < qsizetype{line.start}; });
    return after == lines_.begin() ? 0 : static_cast<std::size_t>(after - lines_.begin()) - 1;
}

QImage PrompterLayout::picture(std::size_t index, const QColor& color, int inset, double ratio) const {
    const Line& line = lines_[index];
    const QSizeF size(width_ + 2 * inset, slotHeight(index));
    QImage image((size * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    QString words = text_.sliced(line.start, line.length);
    while (words.endsWith(u' ')) {
        words.chop(1); // it may hang over the edge
    }
    if (words.isEmpty()) {
        return image;
    }
    QTextLayout layout(words, font_);
    layout.setTextOption(option(QTextOption::NoWrap, line.rightToLeft != 0));
    layout.beginLayout();
    QTextLine drawn = layout.createLine();
    drawn.setLineWidth(width_);
    layout.endLayout();
    QPainter painter(&image);
    painter.setPen(color);
    layout.draw(&painter, QPoint(inset, spacing_ / 2));
    return image;
}

} // namespace velmo
