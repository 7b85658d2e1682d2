#pragma once

#include "platform/synthetic/internal/ScenePictures.h"
#include "platform/synthetic/internal/TeacherScene.h"

#include <memory>

namespace velmo::test {

/// One picture of the synthetic teacher, 1280x720, as a camera gives it.
inline FrameRef teacherPicture(double seconds) {
    return internal::ScenePictures(std::make_unique<internal::TeacherScene>(), {.counter = false}).make(0, seconds);
}

} // namespace velmo::test
