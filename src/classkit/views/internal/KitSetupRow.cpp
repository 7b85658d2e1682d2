#include "classkit/views/internal/KitSetupRow.h"

#include "ui/Button.h"
#include "ui/Symbol.h"
#include "ui/TextField.h"
#include "ui/Theme.h"

#include <QHBoxLayout>
#include <QPainter>

namespace velmo {

namespace {

constexpr int kIcon = 16;
constexpr int kFieldHeight = 30;
constexpr int kGap = 8;

} // namespace

KitSetupRow::KitSetupRow(const KitItem& item, QWidget* parent)
    : QWidget(parent), id_(item.id), symbol_(item.symbol()),
      title_(new TextField(QStringLiteral("Nombre"), kFieldHeight)) {
    title_->setAccessibleName(QStringLiteral("Nombre"));
    title_->setAcceptDrops(false); // the whole section takes them
    connect(title_, &QLineEdit::textEdited, this, &KitSetupRow::titleEdited);
    auto* remove = new Button(ButtonStyle::icon);
    remove->setSymbol(QStringLiteral("minus.circle.fill"));
    remove->setSubdued(true);
    remove->setToolTip(QStringLiteral("Quitar de la lista"));
    remove->setAccessibleName(QStringLiteral("Quitar de la lista"));
    connect(remove, &Button::clicked, this, &KitSetupRow::removeRequested);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(kIcon + kGap - TextField::kRoom, 0, 0, 0);
    row->setSpacing(kGap - TextField::kRoom - 2);
    row->addWidget(title_, 1);
    row->addWidget(remove);
    setTitle(item.title);
}

void KitSetupRow::setTitle(const QString& title) {
    if (title_->text() != title) { // else the cursor would jump
        title_->setText(title);
        title_->setCursorPosition(0);
    }
}

void KitSetupRow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    Symbol::paint(painter, QRectF(0, 0, kIcon, height()), symbol_, kIcon, Theme::mint);
}

} // namespace velmo
