#include "ui/NameDialog.h"

#include "ui/Button.h"
#include "ui/Label.h"
#include "ui/TextField.h"
#include "ui/Theme.h"
#include "ui/Type.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace velmo {

namespace {

constexpr int kWidth = 420;
constexpr int kLeastButton = 96;

/// In line with the buttons' shapes, whatever room of its own the widget has around it.
void inset(QVBoxLayout& column, QWidget* widget, int own = 0) {
    auto* row = new QHBoxLayout;
    row->setContentsMargins(Button::kRoom - own, 0, Button::kRoom - own, 0);
    row->addWidget(widget);
    column.addLayout(row);
}

bool isBlank(const QString& text) {
    return text.trimmed().isEmpty();
}

} // namespace

NameDialog::NameDialog(const Content& content, QWidget* parent)
    : DialogWindow(parent), name_(new TextField(content.placeholder)),
      save_(new Button(ButtonStyle::primary, QStringLiteral("Guardar"))) {
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(content.title);
    setAccessibleName(content.title);
    name_->setMaxLength(content.mostText);
    name_->setAccessibleName(QStringLiteral("Nombre"));
    connect(name_, &TextField::returnPressed, this, &NameDialog::save);
    connect(name_, &TextField::textChanged, this, [this](const QString& text) { save_->setEnabled(!isBlank(text)); });
    auto* cancel = new Button(ButtonStyle::ghost, QStringLiteral("Cancelar"));
    connect(cancel, &Button::clicked, this, &QDialog::close);
    connect(save_, &Button::clicked, this, &NameDialog::save);
    for (Button* button : {cancel, save_}) {
        button->setMinimumWidth(kLeastButton + 2 * Button::kRoom);
    }
    save_->setEnabled(!isBlank(content.name));

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(24 - Button::kRoom, 22, 24 - Button::kRoom, 20 - Button::kRoom);
    column->setSpacing(8);
    addText(content, *column);
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(0);
    buttons->addStretch();
    buttons->addWidget(cancel, 0, Qt::AlignTop);
    buttons->addWidget(save_, 0, Qt::AlignTop);
    column->addLayout(buttons);
    const QMargins around = contentsMargins();
    setFixedWidth(Type::scaled(kWidth) + around.left() + around.right());
    name_->setText(content.name);
    name_->selectAll();
    name_->setFocus();
}

void NameDialog::addText(const Content& content, QVBoxLayout& column) {
    inset(column, makeLabel(content.title, TextStyle::heading, Theme::sand));
    if (!content.explanation.isEmpty()) {
        inset(column, makeWrappedLabel(content.explanation, TextStyle::body, Theme::muted));
    }
    column.addSpacing(4);
    inset(column, name_, TextField::kRoom);
    column.addSpacing(8);
}

void NameDialog::save() {
    const QString name = name_->text();
    if (!isBlank(name)) {
        close();
        emit saved(name);
    }
}

} // namespace velmo
