#pragma once

#include "ui/Shadow.h"

#include <QColor>
#include <QPainterPath>
#include <QPixmap>
#include <QRegion>
#include <QWidget>

#include <cstdint>
#include <optional>

namespace velmo {

/// How far in front a floating surface stands; a greater number covers a lesser one.
enum class PanelLevel {
    spotlight = 2,
    bubble = 3, ///< bubbles, phone, presenter, drawing overlay
    bar = 25,   ///< control bar, palette, teleprompter
    countdown = 1000,
};

/// A surface that floats over everything, full-screen programs included, on every desktop, and does not take the
/// focus from what is in front unless a panel asks for it. Main thread.
///
/// It is seen as a card with a soft shadow; the room for the shadow belongs to the window and lets the mouse through.
/// Without a compositing manager the card is opaque and has no shadow. Children are laid out inside the card: it is
/// the contents rectangle.
class FloatingPanel : public QWidget {
    Q_OBJECT
public:
    struct Floor {
        double radius = 16;
        std::optional<Elevation> shadow = Elevation::floating; ///< absent: the panel paints itself, without a card
        QColor fill = {};                                      ///< invalid: those of all floating cards
        QColor border = {};
    };

    FloatingPanel(PanelLevel level, Floor floor);
    ~FloatingPanel() override;

    PanelLevel level() const { return level_; }
    /// The card on the screen, in Qt's coordinates.
    QRect cardGeometry() const;
    void setCardGeometry(const QRect& card);
    /// In front of all panels of its level. Nothing while hidden.
    void bringToFront();
    /// Mouse and touch go to what is behind.
    void setClickThrough(bool through);
    /// Dragging what is no control moves the panel.
    void setMovableByBackground(bool movable) { movable_ = movable; }

protected:
    /// Where the card is, in own coordinates. A panel whose contents are more than one card overrides it.
    virtual QRect card() const;
    /// What takes the mouse, in own coordinates.
    virtual QRegion mouseRegion() const;
    /// All that is seen where no compositing manager makes the rest clear, in own coordinates.
    virtual QPainterPath outline() const;
    /// The same as a region. A panel that knows its pixels better than a path overrides it.
    virtual QRegion seenRegion() const;
    /// To be called when `card` or `mouseRegion` changed without a change of size.
    void shapeChanged();
    /// To be called when only `outline` or `seenRegion` changed.
    void outlineChanged();
    /// The keyboard comes to this panel until it is given back to who had it. No window manager is asked, and global
    /// keys go on working. Only while shown.
    void takeKeyboard();
    void giveKeyboardBack();
    /// All mouse events that no other window of the program gets come to this panel, wherever the mouse is, until it is
    /// given back. Only while shown.
    void takeMouse();
    void giveMouseBack();
    /// Whether what lies behind the panel shows through it. Known once it was shown.
    bool isComposited() const { return composited_; }

    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    bool eventFilter(QObject* object, QEvent* event) override;
    void applyShape();
    QPixmap paintedFloor() const;

    const PanelLevel level_;
    const Floor floor_;
    bool clickThrough_ = false;
    bool movable_ = false;
    bool composited_ = true;
    bool hasMouse_ = false;
    std::optional<std::uint32_t> keyboardOwner_; // the window that had the keyboard before
    std::optional<QPoint> grip_;                 // where the pointer holds the window while dragging
    QPixmap floorPixmap_;
};

} // namespace velmo
