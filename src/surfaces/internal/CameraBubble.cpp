#include "surfaces/internal/CameraBubble.h"

#include "base/Clock.h"
#include "ui/ScreenPlace.h"
#include "ui/Theme.h"

#include <QEasingCurve>

#include <algorithm>
#include <utility>

namespace velmo {
namespace {

constexpr double kFlightStep = 1.0 / 60;
/// Ring and glow lie outside the bubble and belong to what is seen of it.
constexpr double kSeenInset = BubbleView::pad - 7;

Color plain(const QColor& color) {
    return Color::fromHex(color.rgb() & 0xffffff); // the components that QColor tells as parts of 1 are rounded
}

Color ringColor(const Prefs& prefs) {
    const std::optional<QColor> own = Theme::colorFromHex(prefs.ringCustomHex);
    const auto count = static_cast<std::int64_t>(Theme::ringColors.size());
    return plain(own ? *own : Theme::ring(static_cast<int>(prefs.ringIndex % count)));
}

std::vector<Color> paletteColors(ChameleonPalette palette) {
    std::vector<Color> colors;
    for (const std::uint32_t hex : hexes(palette)) {
        colors.push_back(Color::fromHex(hex));
    }
    return colors;
}

Rect inset(const Rect& rect, double by) {
    return {rect.x + by, rect.y + by, rect.width - 2 * by, rect.height - 2 * by};
}

} // namespace

CameraBubble::CameraBubble(const BubbleServices& services, const BubbleKind& kind)
    : services_(services), kind_(kind),
      view_({services.feed, services.clock, services.timers, services.nameTag}), goal_{0, 0, kind.firstSize.width,
                                                                                       kind.firstSize.height} {
    view_.setWindowTitle(QString::fromUtf8(kind.title));
    view_.setGeometry(ScreenPlace::toQt(goal_));
    view_.onGrab = [this] { land(); };
    view_.onDrag = [this] { goal_ = placeNow(); };
    view_.onRelease = [this] { savePlace(); };
}

CameraBubble::~CameraBubble() = default;

void CameraBubble::dress(std::optional<NameTag::Text> nameTag) {
    const Prefs& prefs = services_.prefs;
    view_.setLook({(prefs.*kind_.shape).value(), prefs.cornerFraction, prefs.ringStyle, factor(prefs.ringWeight),
                   prefs.softShadow, ringColor(prefs), paletteColors(prefs.chameleonPalette), std::move(nameTag)});
    view_.setMirrored(prefs.*kind_.mirror);
}

void CameraBubble::applySize() {
    const Prefs& prefs = services_.prefs;
    const Size bubble = size((prefs.*kind_.shape).value(), diameter((prefs.*kind_.size).value()));
    const Size panel{bubble.width + 2 * BubbleView::pad, bubble.height + 2 * BubbleView::pad};
    setFrame(BubblePlace::resized(goal_, panel, areas()), Motion::animated);
}

void CameraBubble::appear() {
    if (view_.isVisible()) {
        return;
    }
    const Point origin = BubblePlace::initial(savedPlace(), kind_.home, areas(), goal_.size());
    setFrame({origin.x, origin.y, goal_.width, goal_.height}, Motion::none);
    view_.show();
}

void CameraBubble::keep(const Screen& screen) {
    if (!view_.isVisible() || !goal_.intersection(screen.frame).isEmpty()) {
        return;
    }
    const Point origin = BubblePlace::home(kind_.home, areaOf(screen), goal_.size());
    setFrame({origin.x, origin.y, goal_.width, goal_.height}, Motion::none);
}

void CameraBubble::reconnect() {
    view_.reconnect();
    if (!view_.isVisible()) {
        return;
    }
    goal_ = placeNow(); // global points count from the main display's height, which may be another one now
    const std::vector<ScreenArea> screens = areas();
    const Point middle{goal_.midX(), goal_.midY()};
    if (std::ranges::none_of(screens, [&](const ScreenArea& screen) { return screen.frame.contains(middle); })) {
        goal_ = BubblePlace::resized(goal_, goal_.size(), screens);
    }
    view_.setGeometry(ScreenPlace::toQt(goal_));
}

ScreenArea CameraBubble::areaOf(const Screen& screen) const {
    return {screen.frame, ScreenPlace::toGlobal(ScreenPlace::visibleFrame(screen))};
}

std::vector<ScreenArea> CameraBubble::areas() const {
    std::vector<ScreenArea> areas;
    for (const Screen& screen : services_.screens.all()) {
        areas.push_back(areaOf(screen));
    }
    return areas;
}

Rect CameraBubble::placeNow() const {
    return ScreenPlace::toGlobal(view_.geometry());
}

std::optional<Point> CameraBubble::savedPlace() const {
    const DefaultsStore& store = services_.prefs.store();
    const auto x = store.real(QLatin1String(kind_.xKey));
    const auto y = store.real(QLatin1String(kind_.yKey));
    return x && y ? std::optional(Point{*x, *y}) : std::nullopt;
}

// Writing goes to the disk, so only where a movement has ended, and not what a hidden bubble is prepared with.
void CameraBubble::savePlace() {
    const Point origin = goal_.origin();
    if (!view_.isVisible() || savedPlace() == origin) {
        return;
    }
    DefaultsStore& store = services_.prefs.store();
    store.setReal(QLatin1String(kind_.xKey), origin.x);
    store.setReal(QLatin1String(kind_.yKey), origin.y);
}

void CameraBubble::setFrame(const Rect& frame, Motion motion) {
    goal_ = frame;
    const bool there = view_.geometry() == ScreenPlace::toQt(goal_);
    if (motion == Motion::none || !view_.isVisible() || there) {
        land();
        return;
    }
    start_ = placeNow();
    startTime_ = services_.clock.now().seconds();
    if (!std::exchange(flying_, true)) {
        flight_ = services_.timers.repeat(kFlightStep, [this] { fly(); });
    }
}

void CameraBubble::fly() {
    static const QEasingCurve curve(QEasingCurve::OutCubic);
    const double part = (services_.clock.now().seconds() - startTime_) / kMoveSeconds;
    if (part >= 1) {
        land();
        return;
    }
    const double way = curve.valueForProgress(part);
    const auto between = [way](double from, double to) { return from + (to - from) * way; };
    view_.setGeometry(ScreenPlace::toQt({between(start_.x, goal_.x), between(start_.y, goal_.y),
                                         between(start_.width, goal_.width), between(start_.height, goal_.height)}));
}

void CameraBubble::land() {
    if (std::exchange(flying_, false)) {
        flight_->invalidate(); // only that: it may be what calls
    }
    view_.setGeometry(ScreenPlace::toQt(goal_));
    savePlace();
}

BubbleInfo CameraBubble::info() const {
    const Rect window = placeNow();
    BubbleInfo info;
    info.rect = inset(window, kSeenInset);
    info.circle = (services_.prefs.*kind_.shape).value() == BubbleShape::circle;
    info.corner = services_.prefs.cornerFraction;
    info.window = window;
    info.key = kind_.key;
    return info;
}

} // namespace velmo
