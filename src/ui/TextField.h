#pragma once

#include <QLineEdit>

namespace velmo {

/// One line of plain text to type into, in the program's own look. What is pasted loses its line breaks and controls.
/// Main thread.
class TextField final : public QLineEdit {
    Q_OBJECT
public:
    /// Room around the shape for the mark of the focus, the same on all sides.
    static constexpr int kRoom = 3;
    /// Longer texts than any that is typed by hand: an address with all that follows it fits.
    static constexpr int kMostText = 4000;

    /// `height` of the shape, without the room.
    explicit TextField(const QString& placeholder, int height = 34, QWidget* parent = nullptr);

    /// Marks a value that cannot be taken.
    void setBad(bool bad);
    bool isBad() const { return bad_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    bool bad_ = false;
};

} // namespace velmo
