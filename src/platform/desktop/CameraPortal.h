#pragma once

#include <QObject>
#include <QVariantMap>

#include <functional>
#include <utility>
#include <vector>

namespace velmo {

/// The desktop's question whether this program may use cameras, for a program in a sandbox, which sees no device
/// before. Main thread.
class CameraPortal final : public QObject {
    Q_OBJECT
public:
    /// This program runs in a sandbox that has the portal stand before the cameras.
    static bool isInUse();

    /// Asks; the desktop remembers the answer and asks the user only once. `answered` is called once: not permitted
    /// also where there is no portal.
    void request(std::function<void(bool permitted)> answered);

private slots:
    void respond(unsigned response, const QVariantMap& results);

private:
    void answer(bool permitted);

    std::vector<std::function<void(bool)>> waiting_;
};

} // namespace velmo
