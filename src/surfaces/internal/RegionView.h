#pragma once

#include "base/Geometry.h"

#include <QRegion>
#include <QString>
#include <QWidget>

#include <functional>
#include <optional>

class QPainterPath;

namespace velmo {

/// The dim screen with the chosen rectangle cut out of it, and the words that say how it goes on. Repaints only what a
/// movement of the mouse changes. Points, y up, the lower left corner at 0, 0. Main thread.
class RegionView final : public QWidget {
    Q_OBJECT
public:
    /// Fills `parent`.
    RegionView(QWidget* parent, QString prompt, std::optional<Rect> selection);

    std::optional<Rect> selection() const { return selection_; }
    /// The words of now.
    QString prompt() const;
    /// The selection's line and the words: all that is not dim.
    QPainterPath outline() const;

signals:
    /// Any button, before anything comes of it.
    void pressed();
    void selectionChanged();
    /// Of the selection as it is.
    void accepted();
    void cancelled();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    Point pointOf(const QMouseEvent& event) const;
    Size screenSize() const;
    bool isUsable() const;
    void select(std::optional<Rect> selection);
    QRectF hole() const;
    QRect pill() const;
    void paintPill(QPainter& painter) const;

    const QString givenPrompt_;
    std::optional<Rect> selection_;
    std::optional<Point> start_; // where the button went down
};

} // namespace velmo
