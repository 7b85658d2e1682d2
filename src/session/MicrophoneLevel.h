#pragma once

#include <QObject>

namespace velmo {

/// How loud the chosen microphone is while a recording is prepared or runs, for what shows it. Main thread.
class MicrophoneLevel : public QObject {
    Q_OBJECT
public:
    /// 0 to 1; 0 without a microphone.
    virtual double level() const = 0;

signals:
    void levelChanged();
};

} // namespace velmo
