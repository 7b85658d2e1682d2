#pragma once

#include "session/MicrophoneLevel.h"

namespace velmo::test {

/// Is as loud as the test says.
class FakeMicrophoneLevel final : public MicrophoneLevel {
public:
    double level() const override { return level_; }
    void say(double level) {
        level_ = level;
        emit levelChanged();
    }

private:
    double level_ = 0;
};

} // namespace velmo::test
