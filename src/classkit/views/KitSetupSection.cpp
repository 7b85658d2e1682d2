#include "classkit/views/KitSetupSection.h"

#include "classkit/ClassKit.h"
#include "classkit/views/KitDrop.h"
#include "classkit/views/internal/KitSetupRow.h"
#include "ui/Button.h"
#include "ui/Label.h"
#include "ui/SwitchRow.h"
#include "ui/TextField.h"
#include "ui/Theme.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace velmo {

namespace {

constexpr int kRoom = Button::kRoom;
constexpr int kFieldInset = kRoom - TextField::kRoom;

/// `widget` where the room for the focus ends.
QLayout* inset(QWidget* widget) {
    auto* box = new QVBoxLayout;
    box->setContentsMargins(kRoom, 0, 0, 0);
    box->addWidget(widget);
    return box;
}

} // namespace

KitSetupSection::KitSetupSection(ClassKit& kit, QWidget* parent) : QWidget(parent), kit_(kit) {
    setAcceptDrops(true);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    addRows(*column);
    addLinkField(*column);
    addButtons(*column);
    copyFiles_ = new SwitchRow(QStringLiteral("Guardar una copia de los archivos con la clase"), {});
    connect(copyFiles_, &SwitchRow::switched, this, [this](bool on) { kit_.setCopyFiles(on); });
    column->addSpacing(4);
    column->addLayout(inset(copyFiles_));
    connect(&kit_, &ClassKit::itemsChanged, this, &KitSetupSection::refresh);
    connect(&kit_, &ClassKit::copyFilesChanged, this, &KitSetupSection::refresh);
    refresh();
}

KitSetupSection::~KitSetupSection() = default;

void KitSetupSection::addRows(QVBoxLayout& column) {
    hint_ = makeWrappedLabel({}, TextStyle::caption, Theme::muted);
    setShortcutModifier(ShortcutModifier::control);
    column.addLayout(inset(hint_));
    rowColumn_ = new QVBoxLayout;
    rowColumn_->setContentsMargins(kRoom, 0, kFieldInset, 0);
    rowColumn_->setSpacing(0);
    column.addLayout(rowColumn_);
}

void KitSetupSection::setShortcutModifier(ShortcutModifier modifier) {
    hint_->setText(shortcutText(QStringLiteral("Agrega tu presentación, PDF, documentos, links o videos de YouTube. "
                                               "Mientras grabas los abres con un clic (⌃K) y quedan guardados con la "
                                               "clase."),
                                modifier));
}

void KitSetupSection::addLinkField(QVBoxLayout& column) {
    link_ = new TextField(QStringLiteral("Pega un link o un video de YouTube"));
    link_->setAccessibleName(link_->placeholderText());
    link_->setToolTip(link_->placeholderText()); // the field is narrower
    link_->setAcceptDrops(false);                // the whole section takes them
    connect(link_, &QLineEdit::returnPressed, this, &KitSetupSection::addLink);
    auto* add = new Button(ButtonStyle::ghost, QStringLiteral("Agregar"));
    connect(add, &Button::clicked, this, &KitSetupSection::addLink);
    auto* row = new QHBoxLayout;
    row->setContentsMargins(kFieldInset, 0, 0, 0);
    row->setSpacing(1);
    row->addWidget(link_, 1);
    row->addWidget(add);
    column.addLayout(row);
    badLink_ = makeWrappedLabel(QStringLiteral("Ese link no parece válido."), TextStyle::caption, Theme::dangerText());
    badLink_->hide();
    column.addLayout(inset(badLink_));
}

void KitSetupSection::addButtons(QVBoxLayout& column) {
    auto* files = new Button(ButtonStyle::ghost, QStringLiteral("Agregar archivos…"));
    files->setSymbol(QStringLiteral("plus"));
    connect(files, &Button::clicked, this, [this] { kit_.addFiles(); });
    empty_ = new Button(ButtonStyle::quiet, QStringLiteral("Vaciar"));
    connect(empty_, &Button::clicked, this, [this] { kit_.removeAll(); });
    auto* row = new QHBoxLayout;
    row->setSpacing(0);
    row->addWidget(files);
    row->addWidget(empty_);
    row->addStretch();
    column.addLayout(row);
}

void KitSetupSection::addLink() {
    const bool taken = kit_.add(link_->text());
    if (taken) {
        link_->clear();
    }
    link_->setBad(!taken);
    badLink_->setVisible(!taken);
}

void KitSetupSection::refresh() {
    refreshRows();
    hint_->setVisible(kit_.items().empty());
    empty_->setVisible(!kit_.items().empty());
    copyFiles_->setOn(kit_.copyFiles());
}

void KitSetupSection::refreshRows() {
    // Rows stay with their items: one of them may be what the user types into.
    std::vector<KitSetupRow*> before = std::exchange(rows_, {});
    for (const KitItem& item : kit_.items()) {
        const auto found =
            std::find_if(before.begin(), before.end(), [&](const KitSetupRow* row) { return row->id() == item.id; });
        KitSetupRow* row = nullptr;
        if (found != before.end()) {
            row = *found;
            before.erase(found);
        } else {
            row = new KitSetupRow(item);
            connect(row, &KitSetupRow::titleEdited, this,
                    [this, id = item.id](const QString& title) { kit_.setTitle(id, title); });
            connect(row, &KitSetupRow::removeRequested, this, [this, item] { kit_.remove(item); });
        }
        row->setTitle(item.title);
        const int place = static_cast<int>(rows_.size());
        if (rowColumn_->indexOf(row) != place) {
            rowColumn_->removeWidget(row);
            rowColumn_->insertWidget(place, row);
        }
        rows_.push_back(row);
    }
    for (KitSetupRow* gone : before) {
        rowColumn_->removeWidget(gone);
        gone->hide();
        gone->deleteLater(); // its own button may have asked for it
    }
}

void KitSetupSection::dragEnterEvent(QDragEnterEvent* event) {
    if (KitDrop::holdsMaterial(*event->mimeData())) {
        event->acceptProposedAction();
    }
}

void KitSetupSection::dropEvent(QDropEvent* event) {
    if (KitDrop::addTo(kit_, *event->mimeData())) {
        event->setDropAction(Qt::CopyAction); // the file stays where it is
        event->accept();
    }
}

} // namespace velmo
