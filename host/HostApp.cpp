#include "host/HostApp.h"

#include "host/machine/MachineWriter.h"
#include "host/objects/WindowObjects.h"
#include "host/objects/WindowSize.h"
#include "hostcheck/ComponentCheck.h"
#include "hostcheck/HostCheck.h"
#include "plugin/ComponentMgr.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFileInfo>
#include <QtGui/QScreen>

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace host {

namespace {

constexpr int kExitNoService = 1;
constexpr int kExitNotReleased = 1;
constexpr int kExitIncomplete = 1;
constexpr int kExitBadStart = 2;
constexpr int kDrainPollMs = 20;
// Time without a call of a host method; longer than any tool computes between two calls.
constexpr int kQuietMs = 250;
// A disconnected agent never reports the end of its call.
constexpr int kAnnouncedLimitMs = 3000;
// A client that keeps calling tools without the gate, or a scan, must not block the shutdown. A scan can wait
// 30 seconds for another program.
constexpr int kCallsLimitMs = 5000;
constexpr int kScanLimitMs = 45000;
// Without a window; shorter than the pause of the gate after a call.
constexpr int kClickMs = 1500;
const QString kComponent = QStringLiteral("AIBridge");

QString loadError()
{
    const QString folder = QCoreApplication::applicationDirPath();
    if (!QFileInfo::exists(folder + QLatin1String("/components.ini")))
        return QStringLiteral("there is no components.ini in %1").arg(folder);
    const hostcheck::LoadReport report = hostcheck::checkComponent(kComponent);
    return report.step == hostcheck::LoadStep::Complete
               ? QStringLiteral("components.ini in %1 does not name the component %2").arg(folder, kComponent)
               : hostcheck::textOf(report);
}

// A picture is drawn without a display, so nobody sees its window.
Consent consentOf(const Options& options)
{
    if (options.unattended)
        return Consent::Waived;
    const bool hasWindow = !options.headless && options.screenshot.isEmpty();
    return hasWindow ? Consent::Window : Consent::Missing;
}

QElapsedTimer startedTimer()
{
    QElapsedTimer timer;
    timer.start();
    return timer;
}

} // namespace

void printError(const QString& text)
{
    std::fprintf(stderr, "zorhost: %s\n", text.toUtf8().constData());
}

HostApp::HostApp(Options options, std::unique_ptr<Backend> backend)
    : sinceStart_(startedTimer()),
      options_(std::move(options)),
      scene_(std::move(backend), options_.answer, options_.theme.value_or(ThemeMode::System),
             options_.language),
      screenshot_(options_.screenshot),
      service_(ServiceWatcher::configuredAddress(), [this] { return scene_.link().isServerRunning(); })
{
    scene_.core().guideView().setClickAfter(options_.click.value_or(options_.headless ? kClickMs : -1));
    HostCore& core = scene_.core();
    core.guides().setStartsGuides(options_.startGuides);
    core.orders().setConsent(consentOf(options_));
    connect(&signals_, &Signals::stopRequested, this, [this] { requestStop(0); });
    connect(&service_, &ServiceWatcher::ready, this, &HostApp::onReady);
    connect(&service_, &ServiceWatcher::failed, this, &HostApp::onFailed);
    connect(&agent_, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
            &HostApp::onAgentFinished);
    connect(&scene_.link(), &BridgeLink::buttonMissing, this, &HostApp::onButtonMissing);
    connect(&drainTimer_, &QTimer::timeout, this, &HostApp::drain);
}

HostApp::~HostApp() = default;

int HostApp::run()
{
    if (options_.checkHost)
        return checkHost();
    if (!setScanFolder() || !openFiles() || !build())
        return kExitBadStart;
    QCoreApplication::exec();
    closeFiles();
    components_.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    scene_.core().backend().release();
    return exitCode_;
}

int HostApp::checkHost()
{
    const std::vector<hostcheck::Finding> findings = hostcheck::checkHost(scene_.engine());
    HostLog::print(hostcheck::tableOf(findings));
    return hostcheck::isComplete(findings) ? 0 : kExitIncomplete;
}

bool HostApp::openFiles()
{
    const QString saveError =
        options_.save.isEmpty() ? QString() : tryMachineFile(*scene_.core().machine(), options_.save);
    if (!saveError.isEmpty()) {
        printError(QStringLiteral("save %1: %2").arg(options_.save, saveError));
        return false;
    }
    if (!openTranscript())
        return false;
    Transcript& transcript = scene_.core().transcript();
    transcript.add(QStringLiteral("begin"), {{QStringLiteral("machine"), scene_.core().machineName()}});
    return !transcript.hasFailed();
}

// One run's answers must not change the next run's recommendations.
bool HostApp::setScanFolder()
{
    const QString folder = options_.scanState.isEmpty() ? scanFolder_.path() : options_.scanState;
    if (!QFileInfo(folder).isDir()) {
        printError(QStringLiteral("scan state %1: not a folder").arg(folder));
        return false;
    }
    QCoreApplication::instance()->setProperty("recscanFolder", folder);
    return true;
}

bool HostApp::openTranscript()
{
    if (options_.transcript.isEmpty())
        return true;
    const QString file = options_.transcript;
    const QString error = scene_.core().transcript().open(file, [file](const QString& reason) {
        printError(QStringLiteral("transcript %1: %2; no further events are written").arg(file, reason));
    });
    if (!error.isEmpty())
        printError(QStringLiteral("transcript %1: %2").arg(file, error));
    return error.isEmpty();
}

void HostApp::closeFiles()
{
    if (!options_.save.isEmpty()) {
        const QString error = writeMachineFile(*scene_.core().machine(), options_.save);
        if (!error.isEmpty()) {
            printError(QStringLiteral("save %1: %2").arg(options_.save, error));
            exitCode_ = kExitBadStart;
        }
    }
    Transcript& transcript = scene_.core().transcript();
    transcript.add(QStringLiteral("end"), {{QStringLiteral("exitCode"), exitCode_}});
    if (transcript.hasFailed())
        exitCode_ = kExitBadStart;
}

bool HostApp::build()
{
    if (scene_.window() == nullptr) {
        printError(QStringLiteral("the window's QML files could not be loaded"));
        return false;
    }
    connect(scene_.window(), &HostWindow::closed, this, [this] { requestStop(0); });
    return show() && loadComponent();
}

bool HostApp::show()
{
    if (options_.screenshot.isEmpty()) {
        rememberWindow();
        setSize();
        scene_.window()->setVisible(!options_.headless);
        return true;
    }
    const QString error = screenshot_.open();
    if (!error.isEmpty()) {
        printError(error);
        return false;
    }
    setSize();
    const QSize size = scene_.window()->size();
    connect(scene_.window(), &QQuickWindow::frameSwapped, this, [this] {
        if (firstFrame_ < 0)
            firstFrame_ = sinceStart_.elapsed();
    });
    scene_.window()->show();
    // The offscreen platform divides the size of a new window by the scale factor.
    scene_.window()->resize(size);
    return true;
}

void HostApp::setSize()
{
    if (!options_.size.has_value())
        return;
    scene_.window()->setWindowState(Qt::WindowNoState);
    scene_.window()->resize(*options_.size);
}

// A window that nobody sees neither uses nor changes the settings of the user.
void HostApp::rememberWindow()
{
    if (options_.headless)
        return;
    memory_ = std::make_unique<WindowMemory>(WindowMemory::userFile(), *scene_.window(), scene_.theme());
    fitScreen(*scene_.window(), scene_.theme().unit());
    const QSize screen = scene_.window()->screen()->availableSize();
    memory_->restore(fittingSize(screen, screen), options_.theme.has_value());
}

void HostApp::takeScreenshot()
{
    if (options_.screenshot.isEmpty() || stopping_)
        return;
    const QString error = screenshot_.take(*scene_.window());
    if (error.isEmpty())
        HostLog::print(QStringLiteral("screenshot %1: %2x%3, first frame after %4 ms")
                           .arg(options_.screenshot)
                           .arg(scene_.window()->width())
                           .arg(scene_.window()->height())
                           .arg(firstFrame_));
    else
        printError(error);
    options_.screenshot.clear();
    if (!error.isEmpty() || options_.agent.isEmpty())
        requestStop(error.isEmpty() ? 0 : kExitBadStart);
}

bool HostApp::loadComponent()
{
    ServiceWatcher::clearPorts();
    scene_.core().clients().observe();
    components_ = std::make_unique<CComponentMgr>(&scene_.engine());
    components_->loadComponents();
    QObject* bridge = components_->component(kComponent);
    if (bridge == nullptr) {
        printError(loadError());
        return false;
    }
    scene_.link().attach(bridge);
    service_.start();
    return true;
}

void HostApp::onReady()
{
    state_ = Service::Up;
    if (stopping_)
        return beginDrain();
    scene_.core().setServiceAddress(service_.address());
    HostLog::print(QStringLiteral("agent service on %1").arg(service_.address()));
    if (!options_.agent.isEmpty())
        agent_.run(options_.agent);
    if (options_.scan) {
        connect(&scene_.link(), &BridgeLink::scanEnded, this, [this] {
            if (options_.agent.isEmpty())
                takeScreenshot();
        });
        scene_.link().scanNow();
    } else if (options_.agent.isEmpty()) {
        takeScreenshot();
    }
}

void HostApp::onFailed()
{
    state_ = Service::Down;
    printError(QStringLiteral("the agent service could not listen on %1").arg(service_.address()));
    exitCode_ = kExitNoService;
    stopping_ = true;
    QCoreApplication::quit();
}

void HostApp::onButtonMissing(int button, int count)
{
    printError(
        QStringLiteral("option --answer names button %1, but the recommendation has the buttons 0 to %2")
            .arg(button)
            .arg(count - 1));
    requestStop(kExitBadStart);
}

void HostApp::onAgentFinished()
{
    scene_.core().log()->write(QStringLiteral("agent ended with exit code %1").arg(agent_.shellExitCode()));
    takeScreenshot();
    if (options_.exitWithAgent)
        requestStop(agent_.shellExitCode());
}

void HostApp::requestStop(int exitCode)
{
    if (stopping_)
        return;
    stopping_ = true;
    exitCode_ = exitCode;
    saveWindow();
    if (state_ == Service::Up)
        beginDrain();
}

void HostApp::saveWindow()
{
    if (memory_ != nullptr && !memory_->save())
        printError(QStringLiteral("settings %1: cannot be written").arg(memory_->file()));
}

void HostApp::beginDrain()
{
    scene_.core().status().setClosing();
    // Unfinished tasks are cancelled, as by the user.
    scene_.core().tasks()->cancelAll();
    agent_.endGroup();
    sinceDrain_.start();
    drainTimer_.start(kDrainPollMs);
}

void HostApp::drain()
{
    if (isQuiet()) {
        drainTimer_.stop();
        QCoreApplication::quit();
        return;
    }
    const int limit = scene_.link().isScanRunning() ? kScanLimitMs : kCallsLimitMs;
    if (sinceDrain_.elapsed() < limit)
        return;
    printError(QStringLiteral("tools are still being called; ending without the release of the component"));
    exitCode_ = kExitNotReleased;
    closeFiles();
    scene_.core().backend().release();
    scanFolder_.remove();
    std::fflush(stdout);
    std::_Exit(kExitNotReleased);
}

bool HostApp::isQuiet()
{
    const bool announced = scene_.link().isToolAnnounced() && sinceDrain_.elapsed() < kAnnouncedLimitMs;
    return !announced && !scene_.core().tasks()->isAtWork() && agent_.state() == QProcess::NotRunning &&
           !scene_.link().isScanRunning() && sinceDrain_.elapsed() >= kQuietMs &&
           scene_.core().calls().millisecondsSinceLastCall() >= kQuietMs;
}

} // namespace host
