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
    /// Where the strip is seen, in own coordinates; empty when there is none.
    QRectF seenStrip() const { return seen_.value() > 0 ? strip() : QRectF(); }

    /// Lower edge of the strip itself; what follows below is its shadow.
    static int bottom();
    /// The icon that stands before `text`; empty for none.
    static QString symbolFor(const QString& text);

signals:
    /// `seenStrip` is another one.
    void stripChanged();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QRectF strip() const;

    void step();

    QString text_; // stays while it goes away
    QRectF announced_;
    Fade seen_;
};

} // namespace velmo
