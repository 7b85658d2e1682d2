#include "ui/FlowLayout.h"

#include <algorithm>

namespace velmo {

FlowLayout::FlowLayout(int gap, QWidget* parent) : QLayout(parent), gap_(gap) {
    setContentsMargins(0, 0, 0, 0);
}

FlowLayout::~FlowLayout() = default;

void FlowLayout::addItem(QLayoutItem* item) {
    items_.emplace_back(item);
}

QLayoutItem* FlowLayout::itemAt(int index) const {
    return index >= 0 && index < count() ? items_[static_cast<std::size_t>(index)].get() : nullptr;
}

QLayoutItem* FlowLayout::takeAt(int index) {
    if (index < 0 || index >= count()) {
        return nullptr;
    }
    QLayoutItem* taken = items_[static_cast<std::size_t>(index)].release(); // the caller's from here on
    items_.erase(items_.begin() + index);
    return taken;
}

int FlowLayout::heightForWidth(int width) const {
    return arrange(QRect(0, 0, width, 0), false);
}

QSize FlowLayout::sizeHint() const {
    int width = 0;
    int height = 0;
    for (const auto& item : items_) {
        width += item->sizeHint().width() + (width > 0 ? gap_ : 0);
        height = std::max(height, item->sizeHint().height());
    }
    return {width, height};
}

QSize FlowLayout::minimumSize() const {
    QSize least;
    for (const auto& item : items_) {
        least = least.expandedTo(item->minimumSize());
    }
    return least;
}

void FlowLayout::setGeometry(const QRect& place) {
    QLayout::setGeometry(place);
    arrange(place, true);
}

int FlowLayout::arrange(const QRect& place, bool move) const {
    int x = place.left();
    int y = place.top();
    int tallest = 0;
    for (const auto& item : items_) {
        const QSize wanted = item->sizeHint();
        if (x > place.left() && x + wanted.width() > place.right() + 1) {
            x = place.left();
            y += tallest + gap_;
            tallest = 0;
        }
        if (move) {
            item->setGeometry(QRect(QPoint(x, y), wanted));
        }
        x += wanted.width() + gap_;
        tallest = std::max(tallest, wanted.height());
    }
    return y + tallest - place.top();
}

} // namespace velmo
