#include "panels/BarControls.h"

namespace velmo {

namespace {

using Face = BarControl::Face;
using Weight = BarControl::Weight;

bool always(const BarState&) {
    return true;
}

Face face(const char* symbol, const char* help, bool lit = false) {
    return {QString::fromUtf8(symbol), QString::fromUtf8(help), lit};
}

constexpr BarControl kControls[] = {
    {1, Weight::normal, always,
     [](const BarState& bar) {
         return bar.paused() ? face("play.fill", "Reanudar (⌃P)", true) : face("pause.fill", "Pausar (⌃P)");
     },
     &RecorderController::togglePause},
    {1, Weight::normal, always, [](const BarState&) { return face("bookmark.fill", "Marcador (⌃M)"); },
     &RecorderController::addMarker},
    {2, Weight::normal, always,
     [](const BarState& bar) { return face("pencil.tip.crop.circle", "Dibujar sobre la pantalla (⌃D)", bar.drawing); },
     &RecorderController::toggleDrawing},
    {5, Weight::subdued, always, [](const BarState&) { return face("arrow.counterclockwise", "Empezar de nuevo"); },
     &RecorderController::restart},
    {5, Weight::subdued, always, [](const BarState&) { return face("trash", "Descartar"); },
     &RecorderController::cancel},
    {6, Weight::normal, [](const BarState& bar) { return bar.material != BarState::Material::none; },
     [](const BarState& bar) {
         return face("books.vertical.fill", "Material de la clase (⌃K)", bar.material == BarState::Material::shown);
     },
     &RecorderController::toggleKit},
};

} // namespace

std::span<const BarControl> barControls() {
    return kControls;
}

QString nameOfHelp(const QString& help) {
    const qsizetype key = help.indexOf(QStringLiteral(" (⌃"));
    return key < 0 ? help : help.left(key);
}

} // namespace velmo
