#pragma once

#include <QScrollArea>

namespace velmo {

/// Shows its contents whole as long as they are no taller than a limit, and scrolls beyond. Tells when the height
/// that it wants has changed.
class FittingScrollArea final : public QScrollArea {
    Q_OBJECT
public:
    explicit FittingScrollArea(QWidget* contents, QWidget* parent = nullptr);

    void setMostHeight(int height);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

signals:
    void heightChanged();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    int mostHeight_ = QWIDGETSIZE_MAX;
};

} // namespace velmo
