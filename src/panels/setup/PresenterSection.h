#pragma once

#include <QWidget>

namespace velmo {

struct SetupContext;

/// How the teacher stands large on the screen. Main thread.
class PresenterSection final : public QWidget {
    Q_OBJECT
public:
    explicit PresenterSection(SetupContext& context, QWidget* parent = nullptr);
};

} // namespace velmo
