#pragma once

#include "settings/ShortcutModifier.h"

#include <QString>
#include <QWidget>

class QLabel;

namespace velmo {

/// What stands in the place of the recordings while there are none: a drawn board, the call to record and where the
/// videos will be.
class EmptyLibrary final : public QWidget {
    Q_OBJECT

public:
    /// `place` as shown: "Videos › Velmo Studio".
    explicit EmptyLibrary(const QString& place, QWidget* parent = nullptr);

    /// Of the key that it tells.
    void setShortcutModifier(ShortcutModifier modifier);

signals:
    void recordRequested();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QRectF card() const;

    QLabel* key_;
};

} // namespace velmo
