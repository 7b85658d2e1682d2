#include "surfaces/internal/PrompterView.h"

#include "ui/Type.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <span>

namespace velmo {

namespace {

constexpr double kAbove = 1.4;    ///< of the font size, before the first and after the last line
constexpr double kSpacing = 0.25; ///< of the font size, between lines
const QColor kInk = QColor::fromRgbF(0.97F, 0.96F, 0.92F);
constexpr double kReadLight = 0.55; ///< of lines that have been read
constexpr double kEdge = 10;        ///< points in which lines come up and go at the edges
constexpr double kSteps = 4;        ///< positions a device pixel
constexpr std::size_t kAhead = 2;   ///< lines painted before they are seen
constexpr qsizetype kSlice = 2000;  ///< characters laid out between two events
constexpr int kWhole = 256;

QFont scriptFont(double size) {
    QFont font(Type::family());
    font.setPixelSize(static_cast<int>(std::lround(size)));
    font.setWeight(QFont::DemiBold);
    return font;
}

/// Adds the mix of two rows to a third; the parts are of 256. A row that is null is clear.
void addRow(std::span<std::uint8_t> out, const std::uint8_t* first, int firstPart, const std::uint8_t* second,
            int secondPart) {
    const std::size_t size = out.size();
    if (first != nullptr && second != nullptr) {
        for (std::size_t i = 0; i < size; ++i) {
            out[i] = static_cast<std::uint8_t>(out[i] + ((first[i] * firstPart + second[i] * secondPart) >> 8));
        }
        return;
    }
    const std::uint8_t* only = first != nullptr ? first : second;
    const int part = first != nullptr ? firstPart : secondPart;
    for (std::size_t i = 0; only != nullptr && i < size; ++i) {
        out[i] = static_cast<std::uint8_t>(out[i] + ((only[i] * part) >> 8));
    }
}

} // namespace

PrompterView::PrompterView(QWidget* parent) : QWidget(parent) {
    setAccessibleName(QStringLiteral("Guion"));
    setCursor(Qt::PointingHandCursor);
    connect(&work_, &QTimer::timeout, this, &PrompterView::work);
}

PrompterView::~PrompterView() = default;

double PrompterView::inset() const {
    return std::round((kAbove - kSpacing / 2) * fontSize_); // half of the spacing belongs to the first line
}

void PrompterView::load(const QString& script, double fontSize, Place place) {
    double read = 0; // the line at the marker, and how far it has come
    std::optional<qsizetype> character;
    if (place == Place::keep && layout_ && layout_->lineCount() > 0) {
        const double at = std::max(0.0, position_ + markerY(fontSize_) - inset());
        const std::size_t line = std::min(layout_->linesBetween(at, at + 1).first, layout_->lineCount() - 1);
        character = layout_->start(line);
        read = (at - layout_->slotTop(line)) / layout_->slotHeight(line);
    }
    fontSize_ = fontSize;
    pictures_.clear();
    layout_.emplace(script, scriptFont(fontSize), std::max(width() - 2 * kInset, 1), kSpacing * fontSize);
    layout_->extend(character.value_or(0) + kSlice);
    double position = 0;
    if (character && *character > 0) {
        const std::size_t line = layout_->lineOf(*character);
        position = layout_->slotTop(line) + read * layout_->slotHeight(line) + inset() - markerY(fontSize_);
    }
    shown_ = -1;
    setPosition(std::clamp(position, 0.0, end()));
    work_.start(0);
}

double PrompterView::end() const {
    if (!layout_ || !layout_->isComplete()) {
        return std::numeric_limits<double>::infinity();
    }
    return std::max(layout_->height() + 2 * inset() - height(), 0.0);
}

void PrompterView::setPosition(double position) {
    position_ = position;
    const long long step = std::llround(position_ * devicePixelRatioF() * kSteps);
    if (step == shown_) {
        return;
    }
    shown_ = step;
    update();
    const auto [first, last] = seenLines();
    const std::size_t ahead = std::min(last + 1, layout_ ? layout_->lineCount() : 0);
    if (ahead > first && pictures_.find(ahead - 1) == pictures_.end()) {
        work_.start(0);
    }
}

std::pair<std::size_t, std::size_t> PrompterView::seenLines() const {
    if (!layout_) {
        return {0, 0};
    }
    return layout_->linesBetween(position_ - inset(), position_ - inset() + height());
}

void PrompterView::work() {
    if (paintNextLine()) {
        return;
    }
    if (layout_ && !layout_->isComplete()) {
        layout_->extend(kSlice);
        return;
    }
    work_.stop();
}

bool PrompterView::paintNextLine() {
    const auto [first, last] = seenLines();
    const std::size_t end = std::min(last + kAhead, layout_ ? layout_->lineCount() : 0);
    std::erase_if(pictures_,
                  [first = first, end](const auto& entry) { return entry.first + 1 < first || entry.first >= end; });
    for (std::size_t line = first; line < end; ++line) {
        if (pictures_.find(line) == pictures_.end()) {
            picture(line);
            return true;
        }
    }
    return false;
}

const QImage& PrompterView::picture(std::size_t line) {
    const auto found = pictures_.find(line);
    if (found != pictures_.end()) {
        return found->second;
    }
    return pictures_.emplace(line, layout_->picture(line, kInk, kInset, devicePixelRatioF())).first->second;
}

double PrompterView::light(std::size_t line) const {
    const double middle = layout_->slotTop(line) + layout_->slotHeight(line) / 2 + inset() - position_;
    const double above = (markerY(fontSize_) - middle) / layout_->slotHeight(line);
    return 1 - (1 - kReadLight) * std::clamp((above - 0.4) / 0.4, 0.0, 1.0);
}

void PrompterView::compose() {
    const double ratio = devicePixelRatioF();
    const QSize size = (QSizeF(this->size()) * ratio).toSize();
    if (canvas_.size() != size) {
        canvas_ = QImage(size, QImage::Format_ARGB32_Premultiplied);
    }
    canvas_.setDevicePixelRatio(ratio);
    canvas_.fill(Qt::transparent);
    const double position = static_cast<double>(shown_) / kSteps; // device pixels
    const auto [first, last] = seenLines();
    for (std::size_t line = first; line < last; ++line) {
        addPicture(picture(line), (layout_->slotTop(line) + inset()) * ratio - position, light(line));
    }
}

void PrompterView::addPicture(const QImage& picture, double top, double light) {
    const int begin = static_cast<int>(std::floor(top));
    const int part = static_cast<int>(std::lround((top - begin) * kWhole)); // of the row above, in each row
    const auto width = static_cast<std::size_t>(std::min(picture.width(), canvas_.width())) * 4;
    const double edge = kEdge * devicePixelRatioF();
    const auto row = [&picture](int index) {
        return index >= 0 && index < picture.height() ? picture.constScanLine(index) : nullptr;
    };
    for (int y = std::max(begin, 0); y < std::min(begin + picture.height() + 1, canvas_.height()); ++y) {
        const double fromEdge = std::min(y + 0.5, canvas_.height() - y - 0.5);
        const double seen = light * std::min(fromEdge / edge, 1.0);
        addRow({canvas_.scanLine(y), width}, row(y - begin), static_cast<int>(seen * (kWhole - part)),
               row(y - begin - 1), static_cast<int>(seen * part));
    }
}

void PrompterView::paintEvent(QPaintEvent*) {
    if (layout_) {
        compose();
        QPainter(this).drawImage(0, 0, canvas_);
    }
}

void PrompterView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    update();
}

void PrompterView::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        emit pressed();
    }
}

// Taken here, so that the panel is not dragged by its text.
void PrompterView::mouseMoveEvent(QMouseEvent*) {}
void PrompterView::mouseReleaseEvent(QMouseEvent*) {}

} // namespace velmo
