#pragma once

#include "host/AgentProcess.h"
#include "host/Options.h"
#include "host/Screenshot.h"
#include "host/ServiceWatcher.h"
#include "host/Signals.h"
#include "host/objects/Scene.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QTimer>

#include <memory>

class CComponentMgr;

namespace host {

/// The application: makes the objects, loads the component, and sees to the end.
///
/// The end. The component's Release blocks the application thread until every tool has ended, and it never
/// returns if the service is not up yet or if a tool then needs this thread. So a stop first waits for the
/// service, with the event loop running. Then the host says no to every question and counts as occupied, so
/// that nothing new begins; the agent that it started is ended; and the loop goes on until no tool call is
/// announced, the scan's thread has ended and no host method has been called for a while. Only then are the
/// loop left and the component released. Where that does not come within seconds, the process ends without
/// the release, which could not return.
class HostApp : public QObject
{
    Q_OBJECT

public:
    HostApp(Options options, Machine machine);
    ~HostApp() override;

    /// Builds everything and serves until the end. Gives the process's exit code.
    int run();

private:
    int checkHost();
    bool build();
    bool show();
    bool loadComponent();
    void takeScreenshot();
    bool openFiles();
    void closeFiles();
    void onReady();
    void onFailed();
    void onAgentFinished();
    void requestStop(int exitCode);
    void beginDrain();
    void drain();
    bool isQuiet();

    QElapsedTimer sinceStart_; // before the scene, whose making it counts
    Options options_;
    Scene scene_;
    Screenshot screenshot_;
    std::unique_ptr<CComponentMgr> components_;
    Signals signals_;
    ServiceWatcher service_;
    AgentProcess agent_;
    QTimer drainTimer_;
    QElapsedTimer sinceDrain_;
    qint64 firstFrame_ = -1; ///< milliseconds after the start; -1 before it
    enum class Service { Starting, Up, Down } state_ = Service::Starting;
    bool stopping_ = false;
    int exitCode_ = 0;
};

/// Writes "zorhost: " and the text as one line to standard error.
void complain(const QString& text);

} // namespace host
