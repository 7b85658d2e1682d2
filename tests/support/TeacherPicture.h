#pragma once

#include "media/PixelBuffer.h"

#include <QImage>

namespace velmo::test {

/// A teacher in front of a wall, as a camera sees her; `phase` in turns moves her a little.
QImage teacherImage(int width, int height, double phase);
/// The same as a camera's frame.
FrameRef teacherPicture(int width, int height, double phase);
/// Any picture as a camera's frame: NV12, Rec. 709, video range. Width and height even.
FrameRef cameraPicture(const QImage& image);
/// A page of a lesson.
QImage slideImage(int width, int height);

} // namespace velmo::test
