#pragma once

#include <QWidget>

namespace velmo {

struct SetupContext;

/// How the camera's bubble looks. Main thread.
class BubbleSection final : public QWidget {
    Q_OBJECT
public:
    explicit BubbleSection(SetupContext& context, QWidget* parent = nullptr);
};

} // namespace velmo
