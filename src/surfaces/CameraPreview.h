#pragma once

#include "surfaces/CameraFeed.h"

#include <QImage>
#include <QObject>
#include <QSize>

#include <memory>

namespace velmo {

class PictureFill;

/// A camera as it is seen on the screen: filling its place, the middle kept, mirrored or not. There is one for each
/// bubble; the presenter borrows the bubble's, so that the picture does not stop in the flight. Main thread.
class CameraPreview : public QObject {
    Q_OBJECT
public:
    /// `feed` is borrowed and must outlive this object.
    explicit CameraPreview(CameraFeed& feed);
    ~CameraPreview() override;

    bool isMirrored() const { return mirrored_; }
    void setMirrored(bool mirrored);
    /// Of the present picture as the camera gives it; empty without one.
    QSize pictureSize() const {
        const FrameRef picture = feed_.picture();
        return picture ? QSize(picture->width(), picture->height()) : QSize();
    }

    /// The present picture, scaled to fill `pixels` and cut to it: opaque, RGB32, of exactly that size. Dark grey
    /// (white 0.08) without a picture. Made once for each picture and size; the reference is good until the next call.
    const QImage& image(QSize pixels);

signals:
    /// `image` gives another picture now.
    void changed();

private:
    CameraFeed& feed_;
    bool mirrored_ = false;
    FrameRef shown_; // what `image_` was made of
    QImage image_;
    std::unique_ptr<PictureFill> fill_; // made for one size of picture and image
};

} // namespace velmo
