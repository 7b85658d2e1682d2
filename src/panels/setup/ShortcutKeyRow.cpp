#include "panels/setup/ShortcutKeyRow.h"

#include "panels/setup/Rows.h"

#include <QVBoxLayout>

namespace velmo {

ShortcutKeyRow::ShortcutKeyRow(Prefs& prefs, QWidget* parent) : QWidget(parent) {
    auto* keys = new Segments(QStringLiteral("Tecla de los atajos"), Rows::choices<ShortcutModifier>());
    Rows::bind(*keys, prefs, prefs.shortcutModifier);
    Rows::addLabelled(*Rows::column(*this), keys->accessibleName(), keys);
}

} // namespace velmo
