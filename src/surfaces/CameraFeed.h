#pragma once

#include "media/PixelBuffer.h"

#include <QObject>

#include <atomic>
#include <mutex>

namespace velmo {

/// The latest picture of one camera, for what shows it on the screen.
///
/// `publish` is called on the camera's thread, everything else on the main thread. News is merged: a main thread that
/// is late hears of the last picture only, and at most one note is under way at a time.
class CameraFeed : public QObject {
    Q_OBJECT
public:
    /// NV12, upright, not mirrored, read only. Null: the camera gives nothing to show.
    FrameRef picture() const;
    /// Any thread. Null takes the picture away.
    void publish(FrameRef picture);

signals:
    void pictureChanged();

private:
    void announce();

    mutable std::mutex lock_;
    FrameRef picture_; // protected by lock_
    std::atomic<bool> announced_{false};
};

} // namespace velmo
