#pragma once

#include "ui/Fade.h"

#include <QAbstractButton>

namespace velmo {

/// One item in the kit panel: its icon and its title on one line, cut at the end.
class KitRow final : public QAbstractButton {
    Q_OBJECT
public:
    /// Of every row: 38, more where the desktop's text is large.
    static int rowHeight();

    KitRow(QString symbol, const QString& title, QWidget* parent = nullptr);

    QSize sizeHint() const override { return {0, rowHeight()}; }
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    int textRoom() const;

    const QString symbol_;
    QString shown_; // the title as far as it fits
    Fade hover_;
};

} // namespace velmo
