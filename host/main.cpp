#include "host/DisplayGuard.h"
#include "host/HostApp.h"
#include "host/RealDisks.h"
#include "host/machine/MachineReader.h"
#include "host/machine/SystemMachine.h"
#include "host/objects/Theme.h"
#include "host/simulation/Simulation.h"
#include "plugin/TsanAnnotations.h"

#include <QtCore/QFileInfo>
#include <QtGui/QGuiApplication>
#include <QtQuick/QQuickWindow>

#include <cstdio>

namespace {

constexpr int kExitUsage = 2;

QStringList argumentsOf(int argc, char** argv)
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    return arguments;
}

// Software rendering looks the same on every computer.
void chooseRenderer()
{
    if (qEnvironmentVariableIsEmpty("QT_QUICK_BACKEND"))
        QQuickWindow::setSceneGraphBackend(QSGRendererInterface::Software);
}

// Without --verbose only warnings are printed, except one about a folder that only desktop sessions have.
void writeMessage(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    const bool isNoise = type == QtDebugMsg || type == QtInfoMsg ||
                         text.startsWith(QLatin1String("QStandardPaths: XDG_RUNTIME_DIR not set"));
    if (!isNoise)
        std::fprintf(stderr, "%s\n", qFormatLogMessage(type, context, text).toLocal8Bit().constData());
}

std::variant<host::Machine, host::MachineError> readMachine(const QString& name)
{
    if (name == QLatin1String("system"))
        return host::readSystemMachine();
    const QString folder = QCoreApplication::applicationDirPath() + QLatin1String("/machines");
    const QString file = host::machineFile(name, folder);
    if (file.isEmpty() && QFileInfo(name).isDir())
        return host::MachineError{QStringLiteral("a folder, not a machine file")};
    if (file.isEmpty())
        return host::MachineError{QStringLiteral("neither a file nor a shipped machine has that name")};
    return host::readMachineFile(file);
}

std::variant<std::unique_ptr<host::Backend>, QString> openBackend(const host::Options& options)
{
    if (options.hasRealDisks())
        return host::openRealDisks(options.images, options.devices);
    auto machine = readMachine(options.machine);
    if (const auto* error = std::get_if<host::MachineError>(&machine))
        return QStringLiteral("machine %1: %2").arg(options.machine, error->text);
    auto simulation = std::make_unique<host::Simulation>(std::move(std::get<host::Machine>(machine)));
    simulation->setPace(options.pace);
    simulation->setFailures(options.failures);
    return std::unique_ptr<host::Backend>(std::move(simulation));
}

void setWin11Checker(host::Backend& backend, bool enabled)
{
    host::Machine machine = *backend.machine();
    machine.win11CheckerEnabled = enabled;
    backend.change(std::move(machine));
}

// True if the command line only asks for help or the version.
bool printInformation(const host::Options& options)
{
    if (options.help)
        std::fputs(host::helpText().toUtf8().constData(), stdout);
    else if (options.version)
        std::puts("zorhost " ZORHOST_VERSION);
    return options.help || options.version;
}

} // namespace

int main(int argc, char** argv)
{
    host::Options options = host::readOptions(argumentsOf(argc, argv));
    if (!options.error.isEmpty()) {
        host::printError(options.error);
        return kExitUsage;
    }
    if (printInformation(options))
        return 0;
    if (!options.verbose)
        qInstallMessageHandler(writeMessage);
    const QString displayError = host::choosePlatform(options);
    if (!displayError.isEmpty()) {
        host::printError(displayError);
        return kExitUsage;
    }
    chooseRenderer();
    auto displayGuard = std::make_unique<host::DisplayGuard>();
    TsanAnnotations::Annotated<QGuiApplication> application(argc, argv);
    displayGuard.reset();
    host::setUsualTextSize();
    QGuiApplication::setApplicationName(QStringLiteral("zorhost"));
    // The desktop shows the icon of this entry for the window.
    QGuiApplication::setDesktopFileName(QStringLiteral("io.github.aibridge.zorhost"));
    QGuiApplication::setQuitOnLastWindowClosed(false);
    auto backend = openBackend(options);
    if (const QString* error = std::get_if<QString>(&backend)) {
        host::printError(*error);
        return kExitUsage;
    }
    auto& opened = std::get<std::unique_ptr<host::Backend>>(backend);
    if (options.win11.has_value())
        setWin11Checker(*opened, *options.win11);
    host::HostApp app(options, std::move(opened));
    return app.run();
}
