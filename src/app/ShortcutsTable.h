#pragma once

#include <QWidget>

namespace velmo {

/// The rows of `Shortcuts::list`, striped, keys drawn as caps. Rows give way on a low screen. Main thread.
class ShortcutsTable final : public QWidget {
    Q_OBJECT

public:
    explicit ShortcutsTable(QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void paintKeys(class QPainter& painter, const QRectF& column, const QString& keys) const;
    int widestDescription() const;
};

} // namespace velmo
