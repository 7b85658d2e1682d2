#include "panels/setup/SaveProfileDialog.h"

#include "ui/Button.h"
#include "ui/Label.h"
#include "ui/TextField.h"
#include "ui/Theme.h"
#include "ui/Type.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace velmo {

namespace {

constexpr int kWidth = 420;
constexpr int kLeastButton = 96;
constexpr int kMostName = 80;

} // namespace

SaveProfileDialog::SaveProfileDialog(QWidget* parent)
    : DialogWindow(parent), name_(new TextField(QStringLiteral("Nombre (por ejemplo, Curso en video)"))),
      save_(new Button(ButtonStyle::primary, QStringLiteral("Guardar"))) {
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(QStringLiteral("Guardar configuración"));
    setAccessibleName(windowTitle());
    name_->setMaxLength(kMostName);
    name_->setAccessibleName(QStringLiteral("Nombre"));
    auto* cancel = new Button(ButtonStyle::ghost, QStringLiteral("Cancelar"));
    cancel->setMinimumWidth(kLeastButton + 2 * Button::kRoom);
    save_->setMinimumWidth(kLeastButton + 2 * Button::kRoom);
    save_->setEnabled(false); // until there is a name
    connect(cancel, &Button::clicked, this, &QDialog::close);
    connect(save_, &Button::clicked, this, &SaveProfileDialog::save);
    connect(name_, &QLineEdit::returnPressed, this, &SaveProfileDialog::save);
    connect(name_, &QLineEdit::textChanged, this,
            [this](const QString& text) { save_->setEnabled(!text.trimmed().isEmpty()); });

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(0);
    buttons->addStretch();
    buttons->addWidget(cancel, 0, Qt::AlignTop);
    buttons->addWidget(save_, 0, Qt::AlignTop);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(24 - Button::kRoom, 22, 24 - Button::kRoom, 20 - Button::kRoom);
    column->setSpacing(8);
    const auto inset = [column](QWidget* widget, int own) {
        auto* row = new QHBoxLayout;
        row->setContentsMargins(Button::kRoom - own, 0, Button::kRoom - own, 0);
        row->addWidget(widget);
        column->addLayout(row);
    };
    inset(makeLabel(windowTitle(), TextStyle::heading, Theme::sand), 0);
    inset(
        makeWrappedLabel(QStringLiteral("Guarda todo el panel: modo, cámaras, burbuja, video, zoom y cámara completa."),
                         TextStyle::body, Theme::muted),
        0);
    column->addSpacing(4);
    inset(name_, TextField::kRoom);
    column->addSpacing(8);
    column->addLayout(buttons);
    const QMargins around = contentsMargins();
    setFixedWidth(Type::scaled(kWidth) + around.left() + around.right());
    name_->setFocus();
}

void SaveProfileDialog::save() {
    const QString name = name_->text();
    if (name.trimmed().isEmpty()) {
        return;
    }
    close();
    emit saved(name);
}

} // namespace velmo
