#include "panels/setup/BasicRow.h"

#include "panels/setup/Rows.h"
#include "ui/Rule.h"

#include <QVBoxLayout>

namespace velmo {

BasicRow::BasicRow(Prefs& prefs, Setting<bool>& setting, const Words& words, bool (*belongsTo)(RecordMode),
                   QWidget* details, QWidget* parent)
    : QWidget(parent) {
    auto* column = Rows::column(*this);
    Rows::add(*column, new Rule);
    Rows::addSwitch(*column, prefs, setting, words.text, words.hint);
    if (details != nullptr) {
        column->addWidget(details);
        Rows::follow(*this, prefs, {&setting}, [details, &setting] { details->setVisible(setting.value()); });
    }
    Rows::follow(*this, prefs, {&prefs.mode}, [this, &prefs, belongsTo] { setVisible(belongsTo(prefs.mode)); });
}

} // namespace velmo
