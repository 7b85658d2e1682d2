#include "panels/setup/VideoSection.h"

#include "panels/setup/ResolutionRow.h"
#include "panels/setup/Rows.h"
#include "panels/setup/SetupContext.h"

#include <QVBoxLayout>

namespace velmo {

VideoSection::VideoSection(SetupContext& context, QWidget* parent) : QWidget(parent) {
    Prefs& prefs = context.prefs;
    auto* column = Rows::column(*this);
    Rows::add(*column, new ResolutionRow(prefs, context.screens, context.timers));
    Rows::addSwitch(*column, prefs, prefs.fps60, QStringLiteral("Movimiento más fluido (60 cuadros por segundo)"));
    Rows::addSwitch(*column, prefs, prefs.systemAudio, QStringLiteral("Grabar el sonido de la computadora"),
                    QStringLiteral("Por ejemplo, el audio de un video que muestras en la clase."));
    Rows::addSwitch(*column, prefs, prefs.muteClicks, QStringLiteral("Quitar el sonido de los clics"));
    Rows::addSwitch(*column, prefs, prefs.countdown, QStringLiteral("Cuenta regresiva 3·2·1"));
}

} // namespace velmo
