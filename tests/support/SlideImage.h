#pragma once

#include <QImage>

namespace velmo::test {

/// A page of a lesson: what lies on the desktop.
QImage slideImage(int width, int height);

} // namespace velmo::test
