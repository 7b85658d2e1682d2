#include "panels/setup/ZoomSection.h"

#include "panels/setup/Rows.h"
#include "panels/setup/SetupContext.h"

#include <QVBoxLayout>

#include <array>
#include <cmath>

namespace velmo {

namespace {

struct Level {
    const char* title;
    double value;
};

constexpr std::array kLevels = {Level{"Poco", 1.5}, Level{"Medio", 2.0}, Level{"Más", 2.5}, Level{"Mucho", 3.0}};
constexpr double kSame = 1e-6;

Segments* makeLevels(Prefs& prefs) {
    std::vector<Segments::Choice> choices;
    for (const Level& level : kLevels) {
        choices.push_back({QString::number(level.value), QString::fromUtf8(level.title)});
    }
    auto* levels = new Segments(QStringLiteral("Nivel de zoom"), choices);
    QObject::connect(levels, &ChoiceGroup::picked, levels,
                     [&prefs](const QString& id) { prefs.zoomLevel = id.toDouble(); });
    Rows::follow(*levels, prefs, {&prefs.zoomLevel}, [levels, &prefs] {
        QString current; // none of them for a level that was set elsewhere
        for (const Level& level : kLevels) {
            if (std::abs(level.value - prefs.zoomLevel) < kSame) {
                current = QString::number(level.value);
            }
        }
        levels->setCurrent(current);
    });
    return levels;
}

} // namespace

ZoomSection::ZoomSection(SetupContext& context, QWidget* parent) : QWidget(parent) {
    Prefs& prefs = context.prefs;
    auto* column = Rows::column(*this);
    Rows::addSwitch(*column, prefs, prefs.zoomAuto, QStringLiteral("Acercar automáticamente al hacer clic"));
    Rows::addSwitch(*column, prefs, prefs.zoomFollow, QStringLiteral("El zoom sigue al mouse"),
                    QStringLiteral("Si lo apagas, el zoom queda fijo donde lo activas."));
    Rows::add(*column, makeLevels(prefs));
    Rows::addSwitch(*column, prefs, prefs.cursorHighlight, QStringLiteral("Burbuja al hacer círculos con el mouse"));
}

} // namespace velmo
