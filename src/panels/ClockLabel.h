#pragma once

#include <QString>
#include <QWidget>

namespace velmo {

/// A time in figures of one width. Repaints only when the text changes, and grows only by whole figures.
class ClockLabel final : public QWidget {
    Q_OBJECT
public:
    explicit ClockLabel(QWidget* parent = nullptr);
    void setText(const QString& text);
    const QString& text() const { return text_; }

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString text_;
};

} // namespace velmo
