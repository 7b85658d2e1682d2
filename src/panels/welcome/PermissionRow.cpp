#include "panels/welcome/PermissionRow.h"

#include "ui/Button.h"
#include "ui/IconTile.h"
#include "ui/Label.h"
#include "ui/SymbolLabel.h"
#include "ui/Theme.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace velmo {

namespace {

constexpr int kPadding = 16;
constexpr int kTile = 38;
constexpr int kLeastHeight = 64;

QWidget* makeDone() {
    auto* done = new QWidget;
    auto* row = new QHBoxLayout(done);
    row->setContentsMargins(0, 0, Button::kRoom, 0);
    row->setSpacing(8);
    row->addWidget(new SymbolLabel(QStringLiteral("checkmark.circle.fill"), 18, Theme::sky));
    row->addWidget(makeLabel(QStringLiteral("Listo"), TextStyle::strong, Theme::sky));
    return done;
}

} // namespace

PermissionRow::PermissionRow(const Words& words, QWidget* parent)
    : QWidget(parent), description_(words.description),
      text_(makeWrappedLabel(words.description, TextStyle::caption, Theme::muted)), done_(makeDone()),
      instead_(makeLabel({}, TextStyle::caption, Theme::muted)),
      allow_(new Button(ButtonStyle::ghost, QStringLiteral("Permitir"))),
      settings_(new Button(ButtonStyle::ghost, QStringLiteral("Abrir Ajustes"))) {
    setAccessibleName(words.title);
    setMinimumHeight(kLeastHeight);
    auto* texts = new QVBoxLayout;
    texts->setSpacing(2);
    texts->addStretch();
    texts->addWidget(makeLabel(words.title, TextStyle::strong, Theme::sand));
    texts->addWidget(text_);
    texts->addStretch();
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(kPadding, 12, kPadding - Button::kRoom, 12);
    row->setSpacing(14);
    row->addWidget(new IconTile(words.symbol, Theme::sky, Theme::surface2, nullptr, kTile));
    row->addLayout(texts, 1);
    instead_->setContentsMargins(0, 0, Button::kRoom, 0);
    for (QWidget* end :
         {done_, static_cast<QWidget*>(instead_), static_cast<QWidget*>(allow_), static_cast<QWidget*>(settings_)}) {
        row->addWidget(end);
    }
    for (Button* button : {allow_, settings_}) {
        button->setAccessibleDescription(words.title);
        connect(button, &Button::clicked, this, &PermissionRow::acted);
    }
    allow_->setEmphasized(true);
    show({});
}

void PermissionRow::show(const Standing& standing) {
    standing_ = standing;
    text_->setText(standing.word.isEmpty() ? description_ : standing.word);
    const bool open = standing.state != PermissionState::granted;
    done_->setVisible(!open);
    instead_->setText(standing.instead);
    instead_->setVisible(open && !standing.instead.isEmpty());
    allow_->setVisible(open && standing.instead.isEmpty() && standing.state == PermissionState::unknown);
    settings_->setVisible(open && standing.instead.isEmpty() && standing.state == PermissionState::denied);
}

} // namespace velmo
