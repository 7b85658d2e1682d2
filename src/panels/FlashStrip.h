#pragma once

#include "ui/Fade.h"

#include <QString>
#include <QWidget>

#include <optional>

namespace velmo {

/// The short message over the bar: comes and goes softly. Its size is the same whether or not
/// there is one.
class FlashStrip final : public QWidget {
    Q_OBJECT
public:
    static constexpr int kHeight = 32;
    static constexpr int kMostWidth = 520;

    explicit FlashStrip(QWidget* parent = nullptr);

    void setFlash(const std::optional<QString>& text);

    /// Lower edge of the strip itself; what follows below is its shadow.
    static int bottom();
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
