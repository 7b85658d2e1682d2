#pragma once

#include <QObject>

class QSocketNotifier;

namespace velmo {

/// Brings the signals that ask the process to end (SIGTERM, SIGINT, SIGHUP) to the main thread's event loop. One per
/// process; its destructor gives the signals their default effect again. Main thread.
class SignalWatcher final : public QObject {
    Q_OBJECT

public:
    SignalWatcher();
    ~SignalWatcher() override;

signals:
    void terminationRequested();

private:
    void read();

    QSocketNotifier* notifier_ = nullptr; ///< a child
};

} // namespace velmo
