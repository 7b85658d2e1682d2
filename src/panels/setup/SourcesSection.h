#pragma once

#include <QWidget>

namespace velmo {

class Picker;
struct SetupContext;

/// The screen to record, and the second camera. Main thread.
class SourcesSection final : public QWidget {
    Q_OBJECT
public:
    explicit SourcesSection(SetupContext& context, QWidget* parent = nullptr);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void refreshScreens();
    void refreshCameras();

    SetupContext& context_;
    Picker* screen_;
    Picker* secondCamera_;
};

} // namespace velmo
