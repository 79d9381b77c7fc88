#pragma once

#include "host/AgentProcess.h"
#include "host/Options.h"
#include "host/Screenshot.h"
#include "host/ServiceWatcher.h"
#include "host/Signals.h"
#include "host/WindowMemory.h"
#include "host/objects/Scene.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTimer>

#include <memory>

class CComponentMgr;

namespace host {

/// The application: creates the objects, loads the component and shuts down.
///
/// Shutdown: the component's Release blocks the application thread until every tool has ended, and it hangs
/// if the service is not up yet or if a tool needs this thread. Therefore a stop first waits for the service,
/// with the event loop running. Then the host rejects every question and counts as busy, and the agent is
/// terminated. The event loop runs until no tool call is announced, the scan has ended and no host method has
/// been called for a while. Then the component is released. If this takes more than a few seconds, the
/// process ends without the release, which would hang.
class HostApp : public QObject
{
    Q_OBJECT

public:
    HostApp(Options options, std::unique_ptr<Backend> backend);
    ~HostApp() override;

    /// Runs until the shutdown. Returns the exit code of the process.
    int run();

private:
    int checkHost();
    bool build();
    bool show();
    void setSize();
    void rememberWindow();
    void saveWindow();
    bool loadComponent();
    void takeScreenshot();
    bool openFiles();
    bool setScanFolder();
    bool openTranscript();
    void closeFiles();
    void onReady();
    void onFailed();
    void onAgentFinished();
    void onButtonMissing(int button, int count);
    void requestStop(int exitCode);
    void beginDrain();
    void drain();
    bool isQuiet();

    QElapsedTimer sinceStart_; // before the scene, because it measures its creation
    Options options_;
    QTemporaryDir scanFolder_; ///< used if the options name no other
    Scene scene_;
    Screenshot screenshot_;
    std::unique_ptr<WindowMemory> memory_; ///< null if nobody sees the window
    std::unique_ptr<CComponentMgr> components_;
    Signals signals_;
    ServiceWatcher service_;
    AgentProcess agent_;
    QTimer drainTimer_;
    QElapsedTimer sinceDrain_;
    qint64 firstFrame_ = -1; ///< milliseconds after the start; -1 before the first frame
    enum class Service { Starting, Up, Down } state_ = Service::Starting;
    bool stopping_ = false;
    int exitCode_ = 0;
};

/// Writes "zorhost: " and the error as one line to standard error.
void printError(const QString& text);

} // namespace host
