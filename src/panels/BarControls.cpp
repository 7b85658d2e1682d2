#include "panels/BarControls.h"

namespace velmo {

namespace {

using Face = BarControl::Face;
using Weight = BarControl::Weight;
using Place = BarControl::Place;
using Menu = BarControl::Menu;
using Entry = BarControl::MenuEntry;
using Material = BarSurroundings::Material;

bool always(const BarState&) {
    return true;
}
bool onScreen(const BarState& bar) {
    return usesScreen(bar.mode);
}
bool zoomedOut(const BarState& bar) {
    return onScreen(bar) && !bar.zoomOn;
}
bool zoomedIn(const BarState& bar) {
    return onScreen(bar) && bar.zoomOn;
}
bool besideCamera(const BarState& bar) {
    return bar.mode == RecordMode::screenCam && bar.around.hasVideo;
}

Face face(const char* symbol, const char* help, bool lit = false) {
    return {QString::fromUtf8(symbol), QString::fromUtf8(help), lit, {}};
}

template <void (RecorderController::*operation)()>
void call(const BarTargets& to, const BarState&) {
    (to.recorder.*operation)();
}

std::vector<Entry> regionEntries(const BarState& bar) {
    const QString toggle = bar.regionOn ? QStringLiteral("Volver a toda la pantalla") : QStringLiteral("Usar la zona");
    return {
        {QStringLiteral("Elegir otra zona…"), {}, {}, false, [](const BarTargets& to) { to.recorder.chooseRegion(); }},
        {toggle, {}, {}, false, [](const BarTargets& to) { to.recorder.toggleRegion(); }}};
}

std::vector<Entry> sceneEntries(const BarState& bar) {
    std::vector<Entry> entries;
    for (const Scene scene : kAllScenes) {
        entries.push_back({title(scene), symbol(scene), QStringLiteral("⌃%1").arg(static_cast<int>(scene)),
                           scene == bar.scene, [scene](const BarTargets& to) { to.recorder.setScene(scene); }});
    }
    return entries;
}

void togglePhone(const BarTargets& to, const BarState& bar) {
    if (to.phone != nullptr) {
        bar.around.phoneVisible ? to.phone->hide() : to.phone->show();
    }
}

void toggleScript(const BarTargets& to, const BarState& bar) {
    if (to.teleprompter == nullptr) {
        return;
    }
    if (bar.around.scriptVisible) {
        to.teleprompter->hide();
    } else if (to.recorder.recordingScreen()) {
        to.teleprompter->show(*to.recorder.recordingScreen());
    }
}

const BarControl kControls[] = {
    {1, always,
     [](const BarState& bar) {
         return bar.paused() ? face("play.fill", "Reanudar (⌃P)", true) : face("pause.fill", "Pausar (⌃P)");
     },
     call<&RecorderController::togglePause>},
    {1, always, [](const BarState&) { return face("bookmark.fill", "Marcador (⌃M)"); },
     call<&RecorderController::addMarker>},

    {2, onScreen,
     [](const BarState& bar) {
         return face("pencil.tip.crop.circle", "Dibujar sobre la pantalla (⌃D)", bar.around.isDrawing);
     },
     call<&RecorderController::toggleDrawing>},
    {2, onScreen,
     [](const BarState& bar) {
         return bar.regionOn ? face("crop.rotate", "Volver a toda la pantalla (⌃R)", true)
                             : face("crop", "Grabar solo una zona (⌃R) · ⌥clic o clic derecho: elegir otra zona");
     },
     call<&RecorderController::toggleRegion>, Weight::normal, Place::row, call<&RecorderController::chooseRegion>,
     Menu::onRightClick, &regionEntries},

    {3, zoomedOut,
     [](const BarState&) {
         return face("plus.magnifyingglass",
                     "Zoom: acercar donde está el mouse (⌃Z) · ⌥ + pellizco o ⌥ + rueda para un zoom continuo");
     },
     call<&RecorderController::toggleZoom>},
    {3, zoomedOut,
     [](const BarState&) {
         return face("plus.viewfinder", "Acercar a un área: dibuja un rectángulo sobre lo que quieres mostrar (⌃A)");
     },
     call<&RecorderController::zoomToArea>},
    {3, zoomedIn, [](const BarState&) { return face("minus.magnifyingglass", "Alejar un paso (⌃−)"); },
     call<&RecorderController::zoomOutStep>, Weight::normal, Place::zoomGroup},
    {3, zoomedIn, [](const BarState&) { return face("plus.magnifyingglass", "Acercar más (⌃+)"); },
     call<&RecorderController::zoomIn>, Weight::normal, Place::zoomGroup},
    {3, zoomedIn,
     [](const BarState& bar) {
         return bar.zoomFollowing ? face("cursorarrow.motionlines", "Sigue al mouse · toca para dejarlo fijo aquí")
                                  : face("pin.fill", "Fijo · toca para que siga al mouse", true);
     },
     call<&RecorderController::toggleZoomFollow>, Weight::normal, Place::zoomGroup},
    {3, zoomedIn, [](const BarState&) { return face("plus.viewfinder", "Acercar a otra área (⌃A)"); },
     call<&RecorderController::zoomToArea>, Weight::normal, Place::zoomGroup},
    {3, zoomedIn,
     [](const BarState&) {
         Face back = face("arrow.uturn.backward", "Volver a la vista normal (⌃Z)");
         back.label = QStringLiteral("Volver");
         return back;
     },
     call<&RecorderController::resetZoom>, Weight::normal, Place::zoomGroup},
    {3, onScreen,
     [](const BarState& bar) {
         return bar.spotlightOn ? face("flashlight.on.fill", "Quitar el foco (⌃F)", true)
                                : face("flashlight.off.fill", "Foco: oscurece todo menos alrededor del mouse (⌃F)");
     },
     call<&RecorderController::toggleSpotlight>},

    {4, besideCamera,
     [](const BarState& bar) {
         return Face{
             symbol(bar.scene),
             QStringLiteral("Vista del video: pantalla y burbuja, solo tú, tú al lado o tú en columna (⌃1 a ⌃4)"),
             false,
             {}};
     },
     nullptr, Weight::normal, Place::row, nullptr, Menu::onClick, &sceneEntries},
    {4, besideCamera, [](const BarState&) { return face("person.crop.circle", "Mostrar u ocultar la cámara"); },
     [](const BarTargets& to, const BarState&) {
         if (to.bubble != nullptr) {
             to.bubble->toggleUserVisibility();
         }
     }},
    {4, [](const BarState& bar) { return besideCamera(bar) && bar.around.hasSecondBubble; },
     [](const BarState&) { return face("video.badge.plus", "Mostrar u ocultar la segunda cámara"); },
     [](const BarTargets& to, const BarState&) {
         if (to.secondBubble != nullptr) {
             to.secondBubble->toggleUserVisibility();
         }
     }},

    {5, always, [](const BarState&) { return face("arrow.counterclockwise", "Empezar de nuevo"); },
     call<&RecorderController::restart>, Weight::subdued},
    {5, always, [](const BarState&) { return face("trash", "Descartar"); }, call<&RecorderController::cancel>,
     Weight::subdued},

    {6, [](const BarState& bar) { return bar.around.hasBoard; },
     [](const BarState&) { return face("pencil.and.scribble", "Quadrel: mostrar u ocultar al instante (⌃B)"); },
     call<&RecorderController::toggleBoard>},
    {6, [](const BarState& bar) { return bar.around.hasPhone; },
     [](const BarState& bar) {
         return bar.around.phoneVisible ? face("iphone", "Quitar el celular del video", true)
                                        : face("iphone", "Mostrar tu celular (iPhone por cable)");
     },
     &togglePhone},
    {6, [](const BarState& bar) { return bar.hasScript; },
     [](const BarState& bar) {
         return bar.around.scriptVisible ? face("text.viewfinder", "Ocultar el guion (⌃T para empezar o pausar)", true)
                                         : face("text.viewfinder", "Mostrar el guion (⌃T)");
     },
     &toggleScript},
    {6, [](const BarState& bar) { return bar.around.material != Material::none; },
     [](const BarState& bar) {
         return face("books.vertical.fill", "Material de la clase (⌃K)", bar.around.material == Material::shown);
     },
     call<&RecorderController::toggleKit>},
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
