#pragma once

#include <QWidget>

namespace velmo {

struct SetupContext;

/// Zoom and pointing. Main thread.
class ZoomSection final : public QWidget {
    Q_OBJECT
public:
    explicit ZoomSection(SetupContext& context, QWidget* parent = nullptr);
};

} // namespace velmo
