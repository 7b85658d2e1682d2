#include "panels/MicrophoneMonitor.h"

#include "session/RecorderController.h"

#include <algorithm>
#include <cmath>

namespace velmo {

namespace {

constexpr double kFloor = 50; // dB below full scale
constexpr double kRange = 42; // dB
constexpr double kBetweenLevels = 0.05;

} // namespace

MicrophoneMonitor::MicrophoneMonitor(RecorderController& recorder, Prefs& prefs, const Devices& devices,
                                     AudioInputService& inputs)
    : recorder_(recorder), prefs_(prefs), devices_(devices), inputs_(inputs) {
    connect(&recorder_, &RecorderController::stateChanged, this, &MicrophoneMonitor::follow);
    connect(&prefs_, &Prefs::changed, this, [this](const QString& key) {
        if (key == prefs_.micID.key()) {
            follow();
        }
    });
    follow();
}

MicrophoneMonitor::~MicrophoneMonitor() {
    input_.reset();
}

double MicrophoneMonitor::levelOf(std::span<const float> interleaved) {
    double power = 0;
    for (std::size_t i = 0; i + 1 < interleaved.size(); i += 2) {
        power += static_cast<double>(interleaved[i]) * static_cast<double>(interleaved[i]);
    }
    const std::size_t frames = interleaved.size() / 2;
    if (frames == 0 || power <= 0) {
        return 0;
    }
    const double decibels = 10 * std::log10(power / static_cast<double>(frames));
    return std::clamp((decibels + kFloor) / kRange, 0.0, 1.0);
}

void MicrophoneMonitor::follow() {
    using State = RecorderController::State;
    const State state = recorder_.state();
    const bool wanted = state != State::idle && state != State::saving;
    const std::optional<AudioDevice> device = wanted ? devices_.microphone(prefs_.micID.value()) : std::nullopt;
    listenTo(device ? QString::fromStdString(device->uniqueID) : QString());
}

void MicrophoneMonitor::listenTo(const QString& uniqueID) {
    if (uniqueID == listeningTo_) {
        return;
    }
    input_.reset();
    queue_.reset();
    listeningTo_ = uniqueID;
    setLevel(0);
    if (uniqueID.isEmpty()) {
        return;
    }
    queue_ = std::make_unique<ThreadQueue>("velmo.microphone.level");
    auto opened =
        inputs_.openMicrophone(uniqueID.toStdString(), *queue_, [this, lastLevel = -1.0](const Sample& sample) mutable {
            const double time = sample.presentation().seconds();
            if (time >= lastLevel && time - lastLevel < kBetweenLevels) {
                return;
            }
            lastLevel = time;
            const double level = levelOf(sample.audio->floats());
            QMetaObject::invokeMethod(
                this, [this, level] { setLevel(listeningTo_.isEmpty() ? 0 : level); }, Qt::QueuedConnection);
        });
    if (opened) {
        input_ = std::move(opened).value();
    } else {
        listeningTo_.clear();
    }
}

void MicrophoneMonitor::setLevel(double level) {
    if (level != level_) {
        level_ = level;
        emit levelChanged();
    }
}

} // namespace velmo
