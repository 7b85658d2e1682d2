#pragma once

#include "base/SerialQueue.h"
#include "platform/AudioInput.h"
#include "session/Collaborators.h"
#include "settings/Devices.h"
#include "settings/Prefs.h"

#include <QObject>
#include <QString>

#include <atomic>
#include <memory>
#include <span>

namespace velmo {

class RecorderController;

/// Listens to the chosen microphone while a recording is prepared or runs, and tells how loud it is.
/// Main thread; sound is measured on a queue of its own, at most 20 levels a second reach the main thread.
class MicrophoneMonitor final : public QObject, public MicrophoneLevel {
    Q_OBJECT
public:
    /// All borrowed; they outlive the monitor.
    MicrophoneMonitor(RecorderController& recorder, Prefs& prefs, const Devices& devices, AudioInputService& inputs);
    ~MicrophoneMonitor() override;

    double level() const override { return level_; }

    /// 0 for -50 dB of average power and below, 1 for -8 dB and above; of the first of two channels.
    static double levelOf(std::span<const float> interleaved);

signals:
    void levelChanged();

private:
    void follow();
    void listenTo(const QString& uniqueID);
    void setLevel(double level);

    RecorderController& recorder_;
    Prefs& prefs_;
    const Devices& devices_;
    AudioInputService& inputs_;
    double level_ = 0;
    QString listeningTo_;
    std::unique_ptr<ThreadQueue> queue_; // there while there is an input
    std::unique_ptr<AudioInput> input_;
};

} // namespace velmo
