#pragma once

#include <QAbstractButton>

namespace velmo {

/// A pill with a word, 28 points high; lit while checked.
class Chip final : public QAbstractButton {
    Q_OBJECT
public:
    explicit Chip(const QString& text, QWidget* parent = nullptr);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace velmo
