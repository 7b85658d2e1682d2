#pragma once

#include <QColor>
#include <QString>
#include <QWidget>

namespace velmo {

/// An icon that is looked at, `size` points square.
class SymbolLabel final : public QWidget {
    Q_OBJECT
public:
    SymbolLabel(QString symbol, int size, QColor color, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const QString symbol_;
    const int size_;
    const QColor color_;
};

} // namespace velmo
