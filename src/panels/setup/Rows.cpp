#include "panels/setup/Rows.h"

#include "ui/Label.h"
#include "ui/SwitchRow.h"
#include "ui/Theme.h"

#include <QHBoxLayout>
#include <QStringList>
#include <QVBoxLayout>

#include <utility>

namespace velmo::Rows {

namespace {

QLayout* inset(QWidget* widget, int left, int right) {
    auto* box = new QHBoxLayout;
    box->setContentsMargins(left, 0, right, 0);
    box->addWidget(widget);
    return box;
}

} // namespace

QVBoxLayout* column(QWidget& section) {
    auto* rows = new QVBoxLayout(&section);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(kGap);
    return rows;
}

void addSwitch(QVBoxLayout& column, Prefs& prefs, Setting<bool>& setting, const QString& text, const QString& hint) {
    auto* row = new SwitchRow(text, hint);
    QObject::connect(row, &SwitchRow::switched, row, [&setting](bool on) { setting = on; });
    follow(*row, prefs, {&setting}, [row, &setting] { row->setOn(setting.value()); });
    if (hint.contains(u'⌃')) {
        follow(*row, prefs, {&prefs.shortcutModifier},
               [row, &prefs, hint] { row->setHint(shortcutText(hint, prefs.shortcutModifier)); });
    }
    column.addLayout(inset(row, kRoom, 0)); // the switch at its right has room of its own
}

void add(QVBoxLayout& column, QWidget* row, int own) {
    column.addLayout(inset(row, kRoom - own, kRoom - own));
}

void addLabelled(QVBoxLayout& column, const QString& label, QWidget* control, const QString& hint, int own) {
    auto* rows = new QVBoxLayout;
    rows->setSpacing(kLabelGap - own);
    add(*rows, makeLabel(label, TextStyle::chip, Theme::muted));
    add(*rows, control, own);
    if (!hint.isEmpty()) {
        addHint(*rows, hint);
    }
    column.addLayout(rows);
}

void addHint(QVBoxLayout& column, const QString& text) {
    add(column, makeWrappedLabel(text, TextStyle::caption, Theme::muted));
}

void follow(QObject& owner, Prefs& prefs, std::initializer_list<const SettingBase*> settings,
            std::function<void()> show) {
    show();
    QStringList keys;
    for (const SettingBase* setting : settings) {
        keys += setting->key();
    }
    QObject::connect(&prefs, &Prefs::changed, &owner, [keys, show = std::move(show)](const QString& key) {
        if (keys.contains(key)) {
            show();
        }
    });
}

} // namespace velmo::Rows
