#include "app/StatusItem.h"

#include "ui/ActionItem.h"

#include <QCursor>
#include <QIcon>
#include <QMenu>
#include <QSystemTrayIcon>

#include <utility>

namespace velmo {
namespace {

struct TrayImage {
    const char* symbol;
    const char* file; ///< with its tint
};
constexpr TrayImage kTrayImages[] = {{"record.circle", ":/velmo/tray-idle.svg"},
                                     {"record.circle.fill", ":/velmo/tray-recording.svg"},
                                     {"pause.circle.fill", ":/velmo/tray-paused.svg"}};

QIcon trayIcon(const QString& symbol) {
    for (const TrayImage& image : kTrayImages) {
        if (symbol == QLatin1String(image.symbol)) {
            return QIcon(QString::fromLatin1(image.file));
        }
    }
    return {};
}

} // namespace

StatusItem::StatusItem(const ShellActions& actions) : actions_(actions), icon_(std::make_unique<QSystemTrayIcon>()) {
    connect(icon_.get(), &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
        if (reason == QSystemTrayIcon::Trigger && menu_) {
            menu_->popup(QCursor::pos());
        }
    });
}

StatusItem::~StatusItem() = default;

void StatusItem::setLook(const StatusItemLook& look) {
    if (look.image != std::exchange(image_, look.image)) {
        icon_->setIcon(trayIcon(look.image));
    }
    const QString text = look.accessibilityText + look.title;
    if (icon_->toolTip() != text) {
        icon_->setToolTip(text);
    }
    if (!icon_->isVisible()) {
        icon_->show();
    }
}

void StatusItem::setMenu(const std::vector<StatusMenuEntry>& entries) {
    auto menu = std::make_unique<QMenu>();
    for (const StatusMenuEntry& entry : entries) {
        if (entry.isSeparator()) {
            menu->addSeparator();
            continue;
        }
        ShellActions::Callback callback;
        if (entry.action && actions_.has(*entry.action)) {
            callback = [this, action = *entry.action] { actions_.perform(action); };
        }
        menu->addAction(new ActionItem(entry.title, {}, std::move(callback), menu.get())); // the menu owns it
    }
    icon_->setContextMenu(menu.get());
    std::swap(menu_, menu);
    if (menu) {
        menu->close();
        menu.release()->deleteLater(); // it may be the one whose entry was just chosen
    }
}

} // namespace velmo
