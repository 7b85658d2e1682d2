#pragma once

#include "panels/setup/EachSecond.h"

#include <QString>
#include <QWidget>

namespace velmo {

class LevelMeter;
class Picker;
struct SetupContext;

/// Camera and microphone of the recording, and how loud the microphone hears. While the section is seen, the lists
/// follow what is plugged in, and so do the previews. Main thread.
class DevicesSection final : public QWidget {
    Q_OBJECT
public:
    explicit DevicesSection(SetupContext& context, QWidget* parent = nullptr);

protected:
    void showEvent(QShowEvent* event) override;

private:
    /// Ids of the devices that the settings mean now; empty for none.
    struct Meant {
        QString camera;
        QString microphone;
        QString secondCamera;
        friend bool operator==(const Meant&, const Meant&) = default;
    };

    QWidget* makeMeter();
    void refresh();
    void look();

    SetupContext& context_;
    Picker* camera_;
    Picker* microphone_;
    LevelMeter* meter_;
    QWidget* meterRow_;
    Meant meant_;
    EachSecond eachSecond_;
};

} // namespace velmo
