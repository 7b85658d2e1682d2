#include "ui/AlertDialog.h"

#include "ui/Button.h"
#include "ui/IconTile.h"
#include "ui/Label.h"
#include "ui/Theme.h"
#include "ui/Type.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include <utility>

namespace velmo {

namespace {

constexpr int kWidth = 420;
constexpr int kLeastButton = 96;

struct IconLook {
    AlertDialog::Icon icon;
    const char* symbol;
    QColor ink;
    QColor tint;
};

IconLook iconLook(AlertDialog::Icon icon) {
    switch (icon) {
    case AlertDialog::Icon::warning:
        return {icon, "exclamationmark.triangle", Theme::gold, Theme::withOpacity(Theme::gold, 0.16)};
    case AlertDialog::Icon::loss:
        return {icon, "exclamationmark.triangle", Theme::dangerText(), Theme::recTint()};
    case AlertDialog::Icon::information:
        break;
    }
    return {icon, "info.circle", Theme::sky, Theme::withOpacity(Theme::mint, 0.16)};
}

} // namespace

AlertDialog::AlertDialog(const Content& content, QWidget* parent) : DialogWindow(parent), first_(content.first) {
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(content.message);
    setAccessibleName(content.message);
    setAccessibleDescription(content.informative);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(24, 22, 24 - Button::kRoom, 20 - Button::kRoom);
    column->setSpacing(16);
    addText(content, *column);
    addButtons(content, *column);
    const QMargins around = contentsMargins();
    setFixedWidth(Type::scaled(kWidth) + around.left() + around.right());
}

void AlertDialog::addText(const Content& content, QVBoxLayout& column) {
    auto* row = new QHBoxLayout;
    row->setSpacing(16);
    row->setContentsMargins(0, 0, Button::kRoom, 0);
    const IconLook look = iconLook(content.icon);
    row->addWidget(new IconTile(QString::fromLatin1(look.symbol), look.ink, look.tint), 0, Qt::AlignTop);
    auto* texts = new QVBoxLayout;
    texts->setSpacing(4);
    texts->addWidget(makeWrappedLabel(content.message, TextStyle::heading, Theme::sand));
    if (!content.informative.isEmpty()) {
        texts->addWidget(makeWrappedLabel(content.informative, TextStyle::body, Theme::muted));
    }
    texts->addStretch();
    row->addLayout(texts, 1);
    column.addLayout(row);
}

void AlertDialog::addButtons(const Content& content, QVBoxLayout& column) {
    auto* row = new QHBoxLayout;
    row->setSpacing(0); // twice the buttons' own room
    row->addStretch();
    const int count = static_cast<int>(content.buttons.size());
    buttons_.resize(static_cast<std::size_t>(count));
    for (int index = count - 1; index >= 0; --index) {
        const bool isFirst = index == 0;
        const ButtonStyle style = !isFirst                         ? ButtonStyle::ghost
                                  : first_ == First::isDestructive ? ButtonStyle::danger
                                                                   : ButtonStyle::primary;
        auto* button = new Button(style, content.buttons[index]);
        button->setMinimumWidth(kLeastButton + 2 * Button::kRoom);
        connect(button, &Button::clicked, this, [this, index] {
            answer(index);
            close();
        });
        row->addWidget(button, 0, Qt::AlignTop);
        buttons_[static_cast<std::size_t>(index)] = button;
    }
    column.addLayout(row);
}

void AlertDialog::showEvent(QShowEvent* event) {
    DialogWindow::showEvent(event);
    if (!buttons_.empty()) {
        Button* focused = first_ == First::isDestructive ? buttons_.back() : buttons_.front();
        // The ring tells which answer Return gives; a lone button needs none.
        if (buttons_.size() > 1) {
            focused->focusVisibly();
        } else {
            focused->setFocus();
        }
    }
}

/// Before the dialog closes: those who wait for the answer on a queue would not hear of it once it is being deleted.
void AlertDialog::answer(int button) {
    if (!std::exchange(answered_, true)) {
        emit chosen(button);
    }
}

void AlertDialog::reject() {
    answer(answerOnClose());
    DialogWindow::reject();
}

} // namespace velmo
