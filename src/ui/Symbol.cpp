#include "ui/Symbol.h"

#include <QCache>
#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

#include <algorithm>
#include <cmath>

namespace velmo::Symbol {

namespace {

struct Entry {
    const char* name;
    const char* drawing; ///< file in icons/, without ".svg"
};

constexpr Entry kTable[] = {
    {"arrow.counterclockwise", "rotate-back"},
    {"arrow.up.right", "arrow-diagonal"},
    {"arrow.uturn.backward", "u-turn"},
    {"arrowtriangle.right.fill", "marker"},
    {"bolt.fill", "bolt"},
    {"bookmark", "bookmark"},
    {"bookmark.fill", "bookmark-solid"},
    {"books.vertical", "books"},
    {"books.vertical.fill", "books-solid"},
    {"checkmark", "check"},
    {"checkmark.circle.fill", "check-circle"},
    {"chevron.down", "chevron-down"},
    {"chevron.left", "chevron-left"},
    {"chevron.right", "chevron-right"},
    {"chevron.up", "chevron-up"},
    {"circle", "ring"},
    {"circle.fill", "disc"},
    {"crop", "crop"},
    {"crop.rotate", "crop-on"},
    {"cursorarrow.motionlines", "pointer-moving"},
    {"display", "display"},
    {"doc", "page"},
    {"doc.on.doc", "copy"},
    {"doc.richtext", "page-text"},
    {"eraser", "eraser"},
    {"exclamationmark.triangle", "warning"},
    {"feather", "feather"},
    {"film", "film"},
    {"flashlight.off.fill", "torch-off"},
    {"flashlight.on.fill", "torch"},
    {"folder", "folder"},
    {"hare.fill", "rabbit"},
    {"highlighter", "highlighter"},
    {"info.circle", "info"},
    {"iphone", "phone"},
    {"keyboard", "keyboard"},
    {"line.diagonal", "slash"},
    {"link", "chain"},
    {"lock.shield", "shield"},
    {"macwindow", "scene-bubble"},
    {"magnifyingglass", "search"},
    {"mic.fill", "microphone"},
    {"minus.circle.fill", "circle-minus"},
    {"minus.magnifyingglass", "zoom-out"},
    {"pause.fill", "pause"},
    {"pencil", "pencil"},
    {"pencil.and.scribble", "pen-scribble"},
    {"pencil.tip", "pen"},
    {"pencil.tip.crop.circle", "pen-circle"},
    {"person.crop.circle", "person-circle"},
    {"person.crop.rectangle", "person-frame"},
    {"person.crop.rectangle.fill", "scene-me"},
    {"person.crop.square.fill", "person-square"},
    {"photo", "picture"},
    {"pin.fill", "pin"},
    {"play.fill", "play"},
    {"play.rectangle.fill", "play-frame"},
    {"plus", "plus"},
    {"plus.magnifyingglass", "zoom-in"},
    {"plus.viewfinder", "area-zoom"},
    {"rectangle", "square"},
    {"rectangle.dashed.badge.record", "screen-record"},
    {"rectangle.fill", "rect-solid"},
    {"rectangle.inset.bottomleading.filled", "screen-bubble"},
    {"rectangle.lefthalf.inset.filled", "scene-column"},
    {"rectangle.on.rectangle.angled", "easel"},
    {"rectangle.portrait.fill", "rect-tall-solid"},
    {"rectangle.righthalf.inset.filled", "scene-side"},
    {"scissors", "scissors"},
    {"signature", "signature"},
    {"speaker.wave.2", "speaker"},
    {"square.and.arrow.up", "share"},
    {"stop.fill", "stop"},
    {"tablecells", "cells"},
    {"text.viewfinder", "script"},
    {"textformat.size.larger", "text-larger"},
    {"textformat.size.smaller", "text-smaller"},
    {"tortoise", "turtle"},
    {"trash", "trash"},
    {"video.badge.plus", "camera-plus"},
    {"video.fill", "camera"},
    {"wand.and.rays", "wand"},
    {"xmark", "cross"},
};

const Entry* find(const QString& name) {
    const auto found = std::find_if(std::begin(kTable), std::end(kTable),
                                    [&](const Entry& entry) { return name == QLatin1String(entry.name); });
    return found == std::end(kTable) ? nullptr : found;
}

QPixmap render(const Entry& entry, int pixels, const QColor& color) {
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(0);
    QSvgRenderer renderer(QStringLiteral(":/velmo/icons/%1.svg").arg(QLatin1String(entry.drawing)));
    QPainter painter(&image);
    renderer.render(&painter);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), color);
    painter.end();
    return QPixmap::fromImage(image);
}

} // namespace

QStringList names() {
    QStringList all;
    for (const Entry& entry : kTable) {
        all.append(QString::fromLatin1(entry.name));
    }
    return all;
}

bool exists(const QString& name) {
    return find(name) != nullptr;
}

QPixmap pixmap(const QString& name, int size, const QColor& color, double ratio) {
    static QCache<QString, QPixmap> cache(400);
    const int pixels = static_cast<int>(std::lround(size * ratio));
    const QString key = QStringLiteral("%1/%2/%3").arg(name).arg(pixels).arg(color.name(QColor::HexArgb));
    if (QPixmap* found = cache.object(key)) {
        return *found;
    }
    const Entry* entry = find(name);
    Q_ASSERT_X(entry != nullptr, "Symbol", qPrintable(name));
    if (entry == nullptr) {
        return {};
    }
    QPixmap made = render(*entry, pixels, color);
    made.setDevicePixelRatio(ratio);
    cache.insert(key, new QPixmap(made));
    return made;
}

void paint(QPainter& painter, const QRectF& rect, const QString& name, int size, const QColor& color) {
    const double ratio = painter.device()->devicePixelRatioF();
    // On whole device pixels: lines half a pixel off are grey.
    const auto snapped = [ratio](double value) { return std::round(value * ratio) / ratio; };
    const QPointF at(snapped(rect.center().x() - size / 2.0), snapped(rect.center().y() - size / 2.0));
    painter.drawPixmap(at, pixmap(name, size, color, ratio));
}

} // namespace velmo::Symbol
