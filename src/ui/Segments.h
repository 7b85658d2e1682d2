#pragma once

#include "ui/ChoiceGroup.h"

namespace velmo {

/// A few short choices side by side in one track, 34 points high. Main thread.
class Segments final : public ChoiceGroup {
    Q_OBJECT
public:
    struct Choice {
        QString id;
        QString title;
        QString symbol = {}; ///< before the title; may be empty
    };

    Segments(const QString& name, const std::vector<Choice>& choices, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace velmo
