#include "host/DisplayGuard.h"

#include <QtCore/QSysInfo>

#include <cstdio>
#include <cstdlib>
#include <utility>
#include <vector>

namespace host {

namespace {

constexpr int kExitNoDisplay = 2;

std::vector<std::pair<QtMsgType, QString>>& collected()
{
    static std::vector<std::pair<QtMsgType, QString>> messages;
    return messages;
}

// The setting that names what Qt could not open.
QString nameOfDisplay()
{
    for (const char* variable : {"QT_QPA_PLATFORM", "WAYLAND_DISPLAY", "DISPLAY"}) {
        if (!qEnvironmentVariableIsEmpty(variable))
            return QStringLiteral("%1=%2").arg(QLatin1String(variable), qEnvironmentVariable(variable));
    }
    return QStringLiteral("the default one");
}

void collect(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    if (type != QtFatalMsg) {
        collected().emplace_back(type, text);
        return;
    }
    const QString line =
        QStringLiteral("zorhost: the display cannot be opened (%1); --headless runs without a window")
            .arg(nameOfDisplay());
    std::fprintf(stderr, "%s\n", line.toUtf8().constData());
    std::fflush(stderr);
    // Qt aborts when this function returns.
    std::_Exit(kExitNoDisplay);
}

bool hasDisplay()
{
    // Other systems have no variable that names the display.
    return QSysInfo::kernelType() != QLatin1String("linux") || !qEnvironmentVariableIsEmpty("DISPLAY") ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") || !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
}

} // namespace

QString choosePlatform(Options& options)
{
    if (options.window && !hasDisplay())
        return QStringLiteral("option --window needs a display; DISPLAY and WAYLAND_DISPLAY are not set");
    options.headless = options.headless || !hasDisplay();
    if (options.headless || options.checkHost || !options.screenshot.isEmpty())
        qputenv("QT_QPA_PLATFORM", "offscreen");
    return QString();
}

DisplayGuard::DisplayGuard() : previous_(qInstallMessageHandler(collect)) {}

DisplayGuard::~DisplayGuard()
{
    qInstallMessageHandler(previous_);
    for (const auto& [type, text] : std::exchange(collected(), {}))
        previous_(type, QMessageLogContext(), text);
}

} // namespace host
