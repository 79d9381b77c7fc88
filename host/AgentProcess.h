#pragma once

#include <QtCore/QProcess>

namespace host {

/// The agent's process, started through the shell, with its output forwarded. It and its descendants form one
/// group, so that endGroup() leaves no process running.
class AgentProcess : public QProcess
{
    Q_OBJECT

public:
    explicit AgentProcess(QObject* parent = nullptr);
    ~AgentProcess() override;

    /// Starts the command with the current environment, which includes the service's ports.
    void run(const QString& command);
    /// Asks the whole group to end. No effect unless it is running.
    void endGroup();
    /// The exit code as shells report it: 128 + the signal's number after a signal.
    int shellExitCode() const;

protected:
    void setupChildProcess() override;

private:
    void startShell(const QString& command);
    void terminateGroup();

    void* job_ = nullptr; ///< Windows only: the job object that contains the group
};

} // namespace host
