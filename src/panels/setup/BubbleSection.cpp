#include "panels/setup/BubbleSection.h"

#include "panels/setup/BubbleRows.h"
#include "panels/setup/Rows.h"
#include "panels/setup/SetupContext.h"

#include <QVBoxLayout>

namespace velmo {

BubbleSection::BubbleSection(SetupContext& context, QWidget* parent) : QWidget(parent) {
    Prefs& prefs = context.prefs;
    auto* column = Rows::column(*this);
    Rows::addHint(*column, QStringLiteral("Doble clic en la burbuja: tamaño · clic derecho: borde y colores"));
    BubbleRows::addShape(*column, prefs);
    BubbleRows::addBorder(*column, prefs);
    BubbleRows::addColors(*column, prefs);
    Rows::addSwitch(*column, prefs, prefs.softShadow, QStringLiteral("Sombra suave"));
    Rows::addSwitch(*column, prefs, prefs.mirror, QStringLiteral("Cámara en espejo"));
}

} // namespace velmo
