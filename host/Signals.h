#pragma once

#include <QtCore/QObject>

class QSocketNotifier;

namespace host {

/// Turns SIGINT and SIGTERM into a Qt signal. The second one ends the process at once, for an end that is
/// stuck. One object at a time. On Windows: Ctrl-C, Ctrl-Break and the closing of the console.
class Signals : public QObject
{
    Q_OBJECT

public:
    explicit Signals(QObject* parent = nullptr);
    ~Signals() override;

Q_SIGNALS:
    void stopRequested();

private:
    QSocketNotifier* notifier_ = nullptr;
};

} // namespace host
