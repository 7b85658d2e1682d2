#pragma once

#include <QWidget>

namespace velmo {

/// The program's mark, `size` points square.
class LogoMark final : public QWidget {
    Q_OBJECT
public:
    explicit LogoMark(int size, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace velmo
