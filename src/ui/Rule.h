#pragma once

#include <QWidget>

namespace velmo {

/// A thin line across, between two things.
class Rule final : public QWidget {
    Q_OBJECT
public:
    explicit Rule(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace velmo
