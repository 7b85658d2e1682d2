#include "session/Scene.h"

namespace velmo {
namespace {

struct Row {
    const char* title;
    const char* symbol;
};

constexpr std::array<Row, 4> kRows{{
    {"Pantalla y burbuja", "macwindow"},
    {"Solo yo", "person.crop.rectangle.fill"},
    {"Yo al lado de mis diapositivas", "rectangle.righthalf.inset.filled"},
    {"Yo en columna", "rectangle.lefthalf.inset.filled"},
}};

const Row& rowOf(Scene scene) {
    return kRows[static_cast<std::size_t>(scene) - 1];
}

} // namespace

std::optional<Scene> sceneFromRaw(int raw) {
    if (raw < 1 || raw > static_cast<int>(kAllScenes.size())) {
        return std::nullopt;
    }
    return static_cast<Scene>(raw);
}

QString title(Scene scene) {
    return QString::fromUtf8(rowOf(scene).title);
}

QString symbol(Scene scene) {
    return QString::fromUtf8(rowOf(scene).symbol);
}

} // namespace velmo
