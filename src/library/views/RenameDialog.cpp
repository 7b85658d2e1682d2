#include "library/views/RenameDialog.h"

#include "ui/Button.h"
#include "ui/Label.h"
#include "ui/Theme.h"
#include "ui/Type.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace velmo {

namespace {

constexpr int kWidth = 420;

QLineEdit* makeField(const QString& text) {
    auto* field = new QLineEdit(text);
    field->setFont(Type::font(TextStyle::body));
    field->setStyleSheet(QStringLiteral("QLineEdit { color: %1; background: %2; border: 1px solid %3;"
                                        " border-radius: 9px; padding: 0 10px; min-height: %6px;"
                                        " selection-color: %1; selection-background-color: %4; }"
                                        "QLineEdit:focus { border-color: %5; }")
                             .arg(Theme::sand.name(), Theme::field().name(), Theme::border.name(QColor::HexArgb),
                                  Theme::selection().name(QColor::HexArgb), Theme::skyBright.name())
                             .arg(Type::heightFor(32)));
    field->selectAll();
    return field;
}

} // namespace

RenameDialog::RenameDialog(const QString& title, QWidget* parent) : DialogWindow(parent), name_(makeField(title)) {
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(QStringLiteral("Renombrar grabación"));
    setAccessibleName(windowTitle());
    name_->setAccessibleName(QStringLiteral("Nombre"));

    auto* label = makeLabel(QStringLiteral("Nombre"), TextStyle::caption, Theme::muted);
    label->setBuddy(name_);
    auto* cancel = new Button(ButtonStyle::ghost, QStringLiteral("Cancelar"));
    connect(cancel, &Button::clicked, this, &QDialog::close);
    auto* save = new Button(ButtonStyle::primary, QStringLiteral("Guardar"));
    connect(save, &Button::clicked, this, &RenameDialog::save);
    connect(name_, &QLineEdit::returnPressed, this, &RenameDialog::save);

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(0);
    buttons->addStretch();
    buttons->addWidget(cancel, 0, Qt::AlignTop);
    buttons->addWidget(save, 0, Qt::AlignTop);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(24, 22, 24, 20 - Button::kRoom);
    column->setSpacing(8);
    column->addWidget(makeLabel(windowTitle(), TextStyle::heading, Theme::sand));
    column->addSpacing(4);
    column->addWidget(label);
    column->addWidget(name_);
    column->addSpacing(8);
    column->addLayout(buttons);
    const QMargins around = contentsMargins();
    setFixedWidth(Type::scaled(kWidth) + around.left() + around.right());
    name_->setFocus();
}

void RenameDialog::save() {
    emit saved(name_->text());
    close();
}

} // namespace velmo
