#pragma once

#include "app/Shortcuts.h"

#include <QWidget>

namespace velmo {

/// The rows of `Shortcuts::list`, striped, keys drawn as caps, with a note at those that another program holds. Rows
/// give way on a low screen. Main thread.
class ShortcutsTable final : public QWidget {
    Q_OBJECT

public:
    explicit ShortcutsTable(QWidget* parent = nullptr);

    void setState(Shortcuts::State state);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QSize sizeWith(int rowHeight) const;
    void paintRow(class QPainter& painter, const QRectF& box, const Shortcuts::Row& row) const;
    /// The width of the caps; with a painter they are drawn.
    double keys(class QPainter* painter, const QRectF& column, const Shortcuts::Row& row) const;
    int keyColumn() const;

    Shortcuts::State state_;
};

} // namespace velmo
