#pragma once

#include "library/Recovery.h"
#include "session/Collaborators.h"
#include "session/RecorderController.h"

#include <QObject>
#include <QString>

#include <cstddef>
#include <optional>

namespace velmo {

/// Tells the user, once, that recordings were recovered, with the last of them selected in the library, and which could
/// not be; not while a session runs, but after it. Main thread. All are borrowed and outlive this object.
class RecoveryNotice final : public QObject {
    Q_OBJECT

public:
    RecoveryNotice(Recovery& recovery, RecorderController& recorder, LibraryWindowPort& window, AlertPort& alerts);

    /// What was recovered, and what could not be yet. `title` is that of the only one. Absent when there is nothing to
    /// tell.
    static std::optional<QString> text(std::size_t recovered, const QString& title, int failures);

private:
    void tellWhenIdle();
    QCoro::Task<void> tell();

    Recovery& recovery_;
    RecorderController& recorder_;
    LibraryWindowPort& window_;
    AlertPort& alerts_;
    bool told_ = false;
};

} // namespace velmo
