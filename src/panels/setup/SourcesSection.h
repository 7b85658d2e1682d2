#pragma once

#include "panels/setup/EachSecond.h"

#include <QWidget>

namespace velmo {

class Picker;
struct SetupContext;

/// The screen to record, and the second camera. The lists follow what is plugged in while the section is seen.
/// Main thread.
class SourcesSection final : public QWidget {
    Q_OBJECT
public:
    explicit SourcesSection(SetupContext& context, QWidget* parent = nullptr);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void refresh();
    void refreshScreens();
    void refreshCameras();

    SetupContext& context_;
    Picker* screen_;
    Picker* secondCamera_;
    EachSecond eachSecond_;
};

} // namespace velmo
