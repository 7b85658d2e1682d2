#include "panels/setup/CustomColorRow.h"

#include "panels/setup/Rows.h"
#include "ui/ColorWell.h"
#include "ui/Label.h"
#include "ui/TextField.h"
#include "ui/Theme.h"
#include "ui/Type.h"

#include <QHBoxLayout>

namespace velmo {

namespace {

constexpr int kHexWidth = 92;

} // namespace

CustomColorRow::CustomColorRow(Prefs& prefs, QWidget* parent)
    : QWidget(parent), prefs_(prefs), well_(new ColorWell(QStringLiteral("Otro color"))),
      hex_(new TextField(QStringLiteral("#RRGGBB"), 28)) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(Rows::kRoom, 0, Rows::kRoom - TextField::kRoom, 0);
    row->setSpacing(10);
    row->addWidget(well_);
    row->addWidget(makeLabel(QStringLiteral("Otro color"), TextStyle::label, Theme::sand), 1);
    hex_->setAccessibleName(QStringLiteral("Otro color, en hexadecimal"));
    hex_->setToolTip(QStringLiteral("Por ejemplo, #7FE8B8"));
    hex_->setFixedWidth(Type::scaled(kHexWidth) + 2 * TextField::kRoom);
    row->addWidget(hex_);
    connect(hex_, &QLineEdit::textEdited, this, &CustomColorRow::typed);
    connect(hex_, &QLineEdit::editingFinished, this, &CustomColorRow::show);
    connect(well_, &ColorWell::picked, this, [this](const QColor& color) {
        if (const auto text = Theme::hexString(color)) {
            prefs_.ringCustomHex = *text;
        }
    });
    Rows::follow(*this, prefs_, {&prefs_.ringCustomHex, &prefs_.ringIndex}, [this] { show(); });
}

void CustomColorRow::typed() {
    const QString text = hex_->text().trimmed();
    const auto color = Theme::colorFromHex(text);
    if (color) {
        prefs_.ringCustomHex = Theme::hexString(*color).value_or(QString());
    } else if (text.isEmpty()) {
        prefs_.ringCustomHex = QString();
    }
    hex_->setBad(!color && !text.isEmpty());
}

void CustomColorRow::show() {
    const auto custom = Theme::colorFromHex(prefs_.ringCustomHex);
    well_->setColor(custom.value_or(Theme::ring(static_cast<int>(prefs_.ringIndex.value()))));
    // What is being typed stays as it is typed.
    if (!hex_->hasFocus() || hex_->text().isEmpty() != prefs_.ringCustomHex.value().isEmpty()) {
        hex_->setText(custom ? Theme::hexString(*custom).value_or(QString()) : QString());
        hex_->setBad(false);
    }
}

} // namespace velmo
