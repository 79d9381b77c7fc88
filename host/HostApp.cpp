#include "host/HostApp.h"

#include "host/objects/Pages.h"
#include "host/objects/WindowObjects.h"
#include "plugin/ComponentMgr.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFileInfo>
#include <QtQml/QQmlContext>

#include <cstdio>
#include <utility>

namespace host {

namespace {

constexpr int kExitNoService = 1;
constexpr int kExitBadStart = 2;
constexpr int kDrainPollMs = 20;
// No host method called for this long: longer than any tool computes between two calls.
constexpr int kQuietMs = 250;
// An agent that was admitted and is gone never says that its call has ended.
constexpr int kAnnouncedLimitMs = 3000;
const QString kComponent = QStringLiteral("AIBridge");

} // namespace

void complain(const QString& text)
{
    std::fprintf(stderr, "zorhost: %s\n", text.toUtf8().constData());
}

HostApp::HostApp(Options options, Machine machine)
    : options_(std::move(options))
    , core_(std::move(machine))
    , rows_(core_)
    , link_(core_, options_.answer)
    , service_(ServiceWatcher::configuredAddress(), [this] { return link_.isServerRunning(); })
{
    connect(&signals_, &Signals::stopRequested, this, [this] { requestStop(0); });
    connect(&service_, &ServiceWatcher::ready, this, &HostApp::onReady);
    connect(&service_, &ServiceWatcher::failed, this, &HostApp::onFailed);
    connect(&agent_, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this, &HostApp::onAgentFinished);
    connect(&drainTimer_, &QTimer::timeout, this, &HostApp::drain);
}

HostApp::~HostApp() = default;

int HostApp::run()
{
    if (!build())
        return kExitBadStart;
    QCoreApplication::exec();
    components_.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return exitCode_;
}

bool HostApp::build()
{
    registerWindowTypes();
    QQmlContext& context = *engine_.rootContext();
    publishPages(core_, context);
    context.setContextProperty(QStringLiteral("host"), &core_);
    context.setContextProperty(QStringLiteral("link"), &link_);
    context.setContextProperty(QStringLiteral("machineRows"), &rows_);
    engine_.load(QUrl(QStringLiteral("qrc:/sandbox/main.qml")));
    window_ = engine_.rootObjects().isEmpty() ? nullptr : qobject_cast<HostWindow*>(engine_.rootObjects().first());
    if (window_ == nullptr) {
        complain(QStringLiteral("the window's QML file could not be loaded"));
        return false;
    }
    window_->setCore(&core_);
    window_->findChild<MainPage*>()->setCore(&core_);
    window_->findChild<QmlExecuter*>()->setCore(&core_);
    connect(window_, &HostWindow::closed, this, [this] { requestStop(0); });
    if (!options_.headless)
        window_->show();
    return loadComponent();
}

bool HostApp::loadComponent()
{
    ServiceWatcher::clearPorts();
    components_ = std::make_unique<CComponentMgr>(&engine_);
    components_->loadComponents();
    QObject* bridge = components_->component(kComponent);
    if (bridge == nullptr) {
        const QString folder = QCoreApplication::applicationDirPath();
        complain(QFileInfo::exists(folder + QLatin1String("/components.ini"))
                     ? QStringLiteral("the component %1 could not be loaded from %2").arg(kComponent, folder)
                     : QStringLiteral("there is no components.ini in %1").arg(folder));
        return false;
    }
    link_.attach(bridge);
    service_.start();
    return true;
}

void HostApp::onReady()
{
    state_ = Service::Up;
    if (stopping_)
        return beginDrain();
    core_.setServicePlace(service_.place());
    HostLog::print(QStringLiteral("agent service on %1").arg(service_.place()));
    if (!options_.agent.isEmpty())
        agent_.run(options_.agent);
    if (options_.scan)
        link_.scanNow();
}

void HostApp::onFailed()
{
    state_ = Service::Down;
    complain(QStringLiteral("the agent service could not listen on %1").arg(service_.place()));
    exitCode_ = kExitNoService;
    stopping_ = true;
    QCoreApplication::quit();
}

void HostApp::onAgentFinished()
{
    core_.log()->write(QStringLiteral("agent ended with exit code %1").arg(agent_.shellExitCode()));
    if (options_.exitWithAgent)
        requestStop(agent_.shellExitCode());
}

void HostApp::requestStop(int exitCode)
{
    if (stopping_)
        return;
    stopping_ = true;
    exitCode_ = exitCode;
    if (state_ == Service::Up)
        beginDrain();
}

void HostApp::beginDrain()
{
    core_.setClosing();
    agent_.endGroup();
    sinceDrain_.start();
    drainTimer_.start(kDrainPollMs);
}

void HostApp::drain()
{
    if (!isQuiet())
        return;
    drainTimer_.stop();
    QCoreApplication::quit();
}

bool HostApp::isQuiet() const
{
    const bool announced = link_.isToolAnnounced() && sinceDrain_.elapsed() < kAnnouncedLimitMs;
    return !announced && agent_.state() == QProcess::NotRunning && !link_.isScanRunning()
        && sinceDrain_.elapsed() >= kQuietMs && core_.millisecondsSinceLastCall() >= kQuietMs;
}

} // namespace host
