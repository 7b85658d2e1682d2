#pragma once

#include <QWidget>

namespace velmo {

/// A drawn blackboard with a lesson on it and the teacher's bubble at its corner. Decoration only.
class BoardPreview final : public QWidget {
    Q_OBJECT

public:
    explicit BoardPreview(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace velmo
