#include "panels/setup/ModePicker.h"

#include "panels/setup/Rows.h"
#include "panels/setup/SetupContext.h"
#include "session/RecorderController.h"
#include "ui/ModeTile.h"

#include <QHBoxLayout>

namespace velmo {

ModePicker::ModePicker(SetupContext& context, QWidget* parent) : ChoiceGroup(QStringLiteral("Qué se graba"), parent) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(Rows::kRoom, 0, Rows::kRoom, 0);
    row->setSpacing(8);
    for (const RecordMode mode : allCases<RecordMode>()) {
        auto* tile = new ModeTile(symbol(mode), title(mode));
        add(rawValue(mode), tile);
        row->addWidget(tile);
    }
    Rows::bind(*this, context.prefs, context.prefs.mode);
    connect(this, &ChoiceGroup::picked, this, [&context] { context.recorder.previewChanged(); });
}

} // namespace velmo
