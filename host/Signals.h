#pragma once

#include <QtCore/QObject>

class QSocketNotifier;

namespace host {

/// Turns SIGINT and SIGTERM into a Qt signal; on Windows Ctrl-C, Ctrl-Break and the closing of the console.
/// The second signal ends the process at once, in case the shutdown hangs. Only one object at a time.
class Signals : public QObject
{
    Q_OBJECT

public:
    explicit Signals(QObject* parent = nullptr);
    ~Signals() override;

Q_SIGNALS:
    void stopRequested();

private:
    QSocketNotifier* notifier_ = nullptr; ///< not used on Windows
};

} // namespace host
