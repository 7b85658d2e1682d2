#pragma once

#include <QColor>
#include <QString>
#include <QWidget>

namespace velmo {

/// A rounded tile with an icon: what kind of message or thing this is.
class IconTile final : public QWidget {
    Q_OBJECT
public:
    IconTile(QString symbol, QColor ink, QColor tint, QWidget* parent = nullptr, int size = 42);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString symbol_;
    QColor ink_;
    QColor tint_;
};

} // namespace velmo
