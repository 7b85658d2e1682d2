#pragma once

#include "ui/ChoiceGroup.h"

namespace velmo {

struct SetupContext;

/// What is recorded: screen and camera, screen, camera. Main thread.
class ModePicker final : public ChoiceGroup {
    Q_OBJECT
public:
    explicit ModePicker(SetupContext& context, QWidget* parent = nullptr);
};

} // namespace velmo
