#include "panels/Alerts.h"

#include "ui/AlertDialog.h"

#include <QCoroSignal>

#include <utility>

namespace velmo {

QCoro::Task<void> Alerts::inform(QString message, QString informative) {
    auto* dialog = new AlertDialog({AlertDialog::Icon::information,
                                    std::move(message),
                                    std::move(informative),
                                    {QStringLiteral("Aceptar")},
                                    AlertDialog::First::isDefault});
    dialog->present();
    co_await qCoro(dialog, &AlertDialog::chosen);
}

QCoro::Task<int> Alerts::ask(QString message, QString informative, QStringList buttons, bool firstIsDestructive) {
    AlertDialog::Content content;
    content.icon = firstIsDestructive ? AlertDialog::Icon::loss : AlertDialog::Icon::warning;
    content.message = std::move(message);
    content.informative = std::move(informative);
    content.buttons = std::move(buttons);
    content.first = firstIsDestructive ? AlertDialog::First::isDestructive : AlertDialog::First::isDefault;
    auto* dialog = new AlertDialog(content);
    dialog->present();
    co_return co_await qCoro(dialog, &AlertDialog::chosen);
}

} // namespace velmo
