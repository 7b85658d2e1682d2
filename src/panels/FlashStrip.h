#pragma once

#include "ui/Fade.h"

#include <QString>
#include <QWidget>

#include <optional>

namespace velmo {

/// The short message over the bar: comes and goes softly. It keeps its place when there is none.
class FlashStrip final : public QWidget {
    Q_OBJECT
public:
    static constexpr int kHeight = 32;
    static constexpr int kMostWidth = 520;

    explicit FlashStrip(QWidget* parent = nullptr);

    void setFlash(const std::optional<QString>& text);

    /// The icon that stands before `text`; empty for none.
    static QString symbolFor(const QString& text);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QRectF strip() const;

    QString text_; // stays while it goes away
    Fade seen_;
};

} // namespace velmo
