#pragma once

#include <QString>

#include <array>
#include <optional>

namespace velmo {

/// What the viewer sees of the teacher. The number is also the digit of the scene's key.
enum class Scene { screen = 1, me = 2, side = 3, column = 4 };

inline constexpr std::array<Scene, 4> kAllScenes{Scene::screen, Scene::me, Scene::side, Scene::column};

/// Absent for anything but 1 to 4.
std::optional<Scene> sceneFromRaw(int raw);
/// Spanish, for menus and messages.
QString title(Scene scene);
/// Name of the icon.
QString symbol(Scene scene);

} // namespace velmo
