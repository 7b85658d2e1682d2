#include "panels/LevelColumns.h"

#include "ui/Theme.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace velmo {

namespace {

constexpr int kWidth = 3;
constexpr int kGap = 2;
constexpr int kLeast = 4;
constexpr int kMost = 16;
constexpr std::array kShares = {0.45, 0.8, 1.0, 0.7, 0.4};

} // namespace

LevelColumns::LevelColumns(QWidget* parent) : QWidget(parent), heights_(heightsFor(0)) {
    setFixedSize(kColumns * (kWidth + kGap) - kGap, kMost);
    setAccessibleName(QStringLiteral("Nivel del micrófono"));
}

LevelColumns::Heights LevelColumns::heightsFor(double level) {
    Heights heights{};
    for (std::size_t i = 0; i < heights.size(); ++i) {
        const double share = std::clamp(level, 0.0, 1.0) * kShares[i];
        heights[i] = kLeast + static_cast<int>(std::lround((kMost - kLeast) * share));
    }
    return heights;
}

void LevelColumns::setLevel(double level) {
    show(heightsFor(paused_ ? 0 : level));
}

void LevelColumns::setPaused(bool paused) {
    if (paused != paused_) {
        paused_ = paused;
        heights_ = heightsFor(0);
        update();
    }
}

void LevelColumns::show(const Heights& heights) {
    if (heights != heights_) {
        heights_ = heights;
        update();
    }
}

void LevelColumns::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(paused_ ? Theme::withOpacity(Theme::border, 0.30) : Theme::skyBright);
    for (int i = 0; i < kColumns; ++i) {
        const int tall = heights_[static_cast<std::size_t>(i)];
        painter.drawRoundedRect(QRectF(i * (kWidth + kGap), kMost - tall, kWidth, tall), 1.5, 1.5);
    }
}

} // namespace velmo
