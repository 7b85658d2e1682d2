#pragma once

#include "ui/Type.h"

#include <QAbstractButton>

namespace velmo {

/// A head with a word and a chevron that opens and closes what is below it; an icon before the word where given.
/// Checked is open.
class Disclosure final : public QAbstractButton {
    Q_OBJECT
public:
    enum class Chevron { atEnd, behindText };

    Disclosure(QString symbol, const QString& text, Chevron chevron, QWidget* parent = nullptr);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const QString symbol_;
    const Chevron chevron_;
};

} // namespace velmo
