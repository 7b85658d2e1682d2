#pragma once

#include <QWidget>

namespace velmo {

struct SetupContext;

/// Quality of picture and sound. Main thread.
class VideoSection final : public QWidget {
    Q_OBJECT
public:
    explicit VideoSection(SetupContext& context, QWidget* parent = nullptr);
};

} // namespace velmo
