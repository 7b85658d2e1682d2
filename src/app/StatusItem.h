#pragma once

#include "app/ShellActions.h"
#include "app/StatusItemModel.h"

#include <QObject>

#include <memory>
#include <vector>

class QMenu;
class QSystemTrayIcon;

namespace velmo {

/// The item in the desktop's tray (StatusNotifier, or the XEmbed tray). A tray shows no text beside its icons here,
/// so the running clock is the item's tooltip. A desktop without a tray shows nothing and breaks nothing.
/// Main thread.
class StatusItem final : public QObject {
    Q_OBJECT

public:
    /// `actions` is borrowed and must outlive the item.
    explicit StatusItem(const ShellActions& actions);
    ~StatusItem() override;

    void setLook(const StatusItemLook& look);
    void setMenu(const std::vector<StatusMenuEntry>& entries);

private:
    const ShellActions& actions_;
    std::unique_ptr<QMenu> menu_;
    std::unique_ptr<QSystemTrayIcon> icon_;
    QString image_; ///< shown now
};

} // namespace velmo
