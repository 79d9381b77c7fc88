#pragma once

#include <QtCore/QProcess>

namespace host {

/// The agent's process, started through the shell, with its output forwarded. It and what it starts form a
/// group of their own, so that ending it leaves nothing behind.
class AgentProcess : public QProcess
{
    Q_OBJECT

public:
    explicit AgentProcess(QObject* parent = nullptr);
    ~AgentProcess() override;

    /// Starts the command with the environment as it is now, the service's ports included.
    void run(const QString& command);
    /// Asks the whole group to end; harmless if there is none.
    void endGroup();
    /// The exit code as a shell tells it: 128 and the signal's number after a signal.
    int shellExitCode() const;

protected:
    void setupChildProcess() override;

private:
    void joinGroup();

    void* group_ = nullptr; // on Windows, the job
};

} // namespace host
