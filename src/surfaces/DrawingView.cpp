#include "surfaces/DrawingView.h"

#include "base/Clock.h"

#include "surfaces/internal/Ink.h"
#include "surfaces/internal/LaserPicture.h"

#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QRandomGenerator>

#include <algorithm>
#include <utility>

namespace velmo {

namespace {

constexpr double kLaserTick = 1.0 / 30;

quint64 randomSeed() {
    const quint64 seed = QRandomGenerator::global()->generate64() >> 1;
    return seed != 0 ? seed : 1;
}

/// Where one list has a mark that the other has not.
QRegion difference(const QList<DrawingItem>& a, const QList<DrawingItem>& b) {
    QRegion region;
    const auto addMissing = [&region](const QList<DrawingItem>& from, const QList<DrawingItem>& in) {
        for (const DrawingItem& item : from) {
            const auto same = [&item](const DrawingItem& other) { return other.seed == item.seed; };
            if (std::none_of(in.begin(), in.end(), same)) {
                region += Ink::region(item);
            }
        }
    };
    addMissing(a, b);
    addMissing(b, a);
    return region;
}

/// Whether `after` is `before` and one mark over all of it.
bool isOneMoreOnTop(const QList<DrawingItem>& before, const QList<DrawingItem>& after) {
    return after.size() == before.size() + 1 &&
           std::equal(before.begin(), before.end(), after.begin(),
                      [](const DrawingItem& a, const DrawingItem& b) { return a.seed == b.seed; });
}

/// From the view's coordinates, y down, to points, y up, or back.
void flip(QPainter& painter, int height) {
    painter.translate(0, height);
    painter.scale(1, -1);
}

} // namespace

/// How a fading laser looks, and where it is.
struct DrawingView::Fading {
    QRegion region;
    LaserPicture picture;
};

DrawingView::DrawingView(QWidget* parent, Services services, std::function<DrawingTip()> tip)
    : QWidget(parent), services_(services), tip_(std::move(tip)), model_(&randomSeed) {
    setGeometry(parent->rect());
    setCursor(Qt::CrossCursor);
}

DrawingView::~DrawingView() = default;

Point DrawingView::pointOf(const QMouseEvent& event) const {
    return {event.position().x(), height() - event.position().y()};
}

double DrawingView::now() const {
    return services_.clock.now().seconds();
}

QRegion DrawingView::flipped(const QRegion& region) const {
    QRegion other;
    for (const QRect& rect : region) {
        other += QRect(rect.x(), height() - rect.y() - rect.height(), rect.width(), rect.height());
    }
    return other;
}

void DrawingView::touch(const QRegion& upward) {
    const QRegion area = flipped(upward) & rect();
    update(area);
    emit inkChanged(area);
}

void DrawingView::changeStrokes(const std::function<void()>& change) {
    const QList<Item> before = model_.strokes();
    const QRegion running = model_.current() ? Ink::region(*model_.current()) : QRegion();
    change();
    const QRegion changed = difference(before, model_.strokes());
    if (!model_.current()) {
        runningLaser_.reset();
    }
    if (changed.isEmpty() && running.isEmpty()) {
        return;
    }
    if (isOneMoreOnTop(before, model_.strokes())) {
        bake(flipped(changed), model_.strokes().last(1));
    } else if (!changed.isEmpty()) {
        bakeAnew(flipped(changed));
    }
    touch(changed + running);
    if (!changed.isEmpty()) {
        emit strokesChanged();
    }
}

void DrawingView::undo() {
    changeStrokes([this] { model_.undo(); });
}

void DrawingView::clear() {
    changeStrokes([this] { model_.clear(); });
}

void DrawingView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        return;
    }
    changeStrokes([&] { model_.press(tip_(), pointOf(*event), now()); });
    if (const auto& current = model_.current()) {
        if (current->kind == Kind::laser) {
            runningLaser_ = std::make_unique<LaserPicture>(size(), devicePixelRatioF());
            unlit_ = {};
        }
        follow({});
    }
}

void DrawingView::mouseMoveEvent(QMouseEvent* event) {
    if (model_.isErasing()) {
        changeStrokes([&] { model_.drag(pointOf(*event), now()); });
        return;
    }
    const bool isShape = model_.current() && velmo::isShape(model_.current()->kind);
    const QRegion before = isShape ? Ink::region(*model_.current()) : QRegion();
    if (model_.drag(pointOf(*event), now())) {
        follow(before);
    }
}

// A shape is drawn anew, and what it covered `before` shows again; of a stroke only the end changes.
void DrawingView::follow(const QRegion& before) {
    const Item& current = *model_.current();
    if (isShape(current.kind)) {
        touch(before + Ink::region(current));
        return;
    }
    const QRect end = Ink::regionOfLastPoint(current);
    if (runningLaser_) {
        unlit_ |= end; // at the next painting, however many movements there are until then
    }
    touch(end);
}

void DrawingView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        return;
    }
    endStroke();
}

void DrawingView::endStroke() {
    const qsizetype lasers = model_.lasers().size();
    changeStrokes([&] {
        model_.release(now());
        if (model_.lasers().size() > lasers) {
            keepLaser();
        }
    });
}

void DrawingView::keepLaser() {
    const Item& laser = model_.lasers().last();
    const QRegion region = Ink::region(laser);
    runningLaser_->light(laser, unlit_);
    runningLaser_->finish(laser, region.boundingRect());
    fadingLasers_.push_back({region, std::move(*runningLaser_)});
    if (!fading_) {
        fading_ = true;
        laserTimer_ = services_.timers.repeat(kLaserTick, [this] { fade(); });
    }
}

void DrawingView::fade() {
    model_.expireLasers(now());
    QRegion seen;
    for (const Fading& laser : fadingLasers_) {
        seen += laser.region;
    }
    // The oldest go first.
    fadingLasers_.erase(fadingLasers_.begin(), fadingLasers_.end() - model_.lasers().size());
    if (model_.lasers().isEmpty()) {
        fading_ = false;
        laserTimer_->invalidate(); // it is what calls
    }
    touch(seen);
}

/// True when the layer is new, and empty.
bool DrawingView::fitLayer() {
    const double ratio = devicePixelRatioF();
    const QSize pixels = (QSizeF(size()) * ratio).toSize();
    if (layer_.size() == pixels && layer_.devicePixelRatio() == ratio) {
        return false;
    }
    layer_ = QImage(pixels, QImage::Format_ARGB32_Premultiplied);
    layer_.setDevicePixelRatio(ratio);
    layer_.fill(0);
    return true;
}

void DrawingView::bake(const QRegion& area, const QList<Item>& strokes) {
    const bool isNew = fitLayer();
    QPainter painter(&layer_);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRegion painted = isNew ? QRegion(rect()) : area;
    painter.setClipRegion(painted);
    flip(painter, height());
    const Ink::Area shown(flipped(painted));
    for (const Item& item : isNew ? model_.strokes() : strokes) {
        Ink::paint(painter, item, 1, shown);
    }
}

void DrawingView::bakeAnew(const QRegion& area) {
    if (model_.strokes().isEmpty()) {
        layer_ = {};
        return;
    }
    if (!layer_.isNull()) {
        QPainter painter(&layer_);
        painter.setClipRegion(area);
        painter.setCompositionMode(QPainter::CompositionMode_Clear);
        painter.fillRect(area.boundingRect(), Qt::transparent);
    }
    bake(area, model_.strokes());
}

void DrawingView::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    paintLayer(painter);
    for (qsizetype i = 0; i < model_.lasers().size(); ++i) {
        fadingLasers_[static_cast<std::size_t>(i)].picture.paint(painter,
                                                                 DrawingModel::laserAlpha(model_.lasers()[i], now()));
    }
    if (model_.current()) {
        paintCurrent(painter, flipped(event->region()));
    }
}

void DrawingView::paintCurrent(QPainter& painter, const QRegion& area) {
    if (runningLaser_) {
        runningLaser_->light(*model_.current(), std::exchange(unlit_, {}));
        runningLaser_->paint(painter, 1);
    }
    flip(painter, height());
    Ink::paint(painter, *model_.current(), 1, Ink::Area(area));
}

void DrawingView::paintLayer(QPainter& painter) {
    if (!layer_.isNull()) {
        bake({}, {}); // all of it when the screen has changed, else nothing
        painter.drawImage(0, 0, layer_);
    }
}

} // namespace velmo
