#pragma once

#include <QAbstractButton>
#include <QColor>

#include <vector>

namespace velmo {

/// A round of colours to choose, 30 points across with room for the mark of the choice. Its text is its accessible
/// name and its tooltip.
class Swatch final : public QAbstractButton {
    Q_OBJECT
public:
    Swatch(const QString& name, std::vector<QColor> colors, QWidget* parent = nullptr);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const std::vector<QColor> colors_;
};

} // namespace velmo
