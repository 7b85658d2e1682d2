#pragma once

#include "ui/Fade.h"

#include <QAbstractButton>

namespace velmo {

/// A tile with an icon over a word, one of several. Checkable.
class ModeTile final : public QAbstractButton {
    Q_OBJECT
public:
    ModeTile(QString symbol, const QString& text, QWidget* parent = nullptr);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const QString symbol_;
};

} // namespace velmo
