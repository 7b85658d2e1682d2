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
    /// To be called when something far inside the contents came or went by a press: the button paints before the
    /// layouts are told, and would show all of it squeezed into the old height for a moment.
    static void settle(const QWidget& inside);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

signals:
    void heightChanged();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    int wholeHeight() const;
    void holdContents();

    int mostHeight_ = QWIDGETSIZE_MAX;
};

} // namespace velmo
