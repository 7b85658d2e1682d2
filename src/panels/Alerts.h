#pragma once

#include "session/Collaborators.h"

namespace velmo {

/// Messages and questions as dialogs of the program's own look, in front of everything. Main thread.
class Alerts final : public AlertPort {
public:
    QCoro::Task<void> inform(QString message, QString informative) override;
    QCoro::Task<int> ask(QString message, QString informative, QStringList buttons, bool firstIsDestructive) override;
};

} // namespace velmo
