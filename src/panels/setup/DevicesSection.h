#pragma once

#include <QTimer>
#include <QWidget>

namespace velmo {

class LevelMeter;
class Picker;
struct SetupContext;

/// Camera and microphone of the recording, and how loud the microphone hears. The lists follow what is plugged in
/// while the section is seen. Main thread.
class DevicesSection final : public QWidget {
    Q_OBJECT
public:
    explicit DevicesSection(SetupContext& context, QWidget* parent = nullptr);

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    QWidget* makeMeter();
    void refresh();

    SetupContext& context_;
    Picker* camera_;
    Picker* microphone_;
    LevelMeter* meter_;
    QWidget* meterRow_;
    QTimer timer_;
};

} // namespace velmo
