#include "host/Options.h"

#include "host/objects/MultiLanguage.h"

#include <QtCore/QFileInfo>
#include <QtCore/QMap>

namespace host {

namespace {

// Takes an option's value off the list; sets the error if there is none.
QString takeValue(QStringList& rest, const QString& option, Options& options)
{
    if (!rest.isEmpty())
        return rest.takeFirst();
    options.error = QStringLiteral("option %1 needs a value").arg(option);
    return QString();
}

void readAnswer(const QString& value, Options& options)
{
    bool isNumber = false;
    options.answer = value.toInt(&isNumber);
    if (!isNumber || options.answer < 0)
        options.error = QStringLiteral("option --answer needs the number of a button, counted from 0");
}

void readWin11(const QString& value, Options& options)
{
    if (value == QLatin1String("on") || value == QLatin1String("off"))
        options.win11 = value == QLatin1String("on");
    else
        options.error = QStringLiteral("option --win11 needs on or off");
}

void readTheme(const QString& value, Options& options)
{
    static const QMap<QString, ThemeMode> modes = {{QStringLiteral("light"), ThemeMode::Light},
                                                   {QStringLiteral("dark"), ThemeMode::Dark},
                                                   {QStringLiteral("system"), ThemeMode::System}};
    options.theme = modes.value(value, ThemeMode::System);
    if (!modes.contains(value))
        options.error = QStringLiteral("option --theme needs light, dark or system");
}

void readLanguage(const QString& value, Options& options)
{
    const QStringList languages = MultiLanguage::languages();
    options.language = value;
    if (!languages.contains(value) && options.error.isEmpty())
        options.error =
            QStringLiteral("option --language needs one of: %1").arg(languages.join(QStringLiteral(", ")));
}

void readClick(const QString& value, Options& options)
{
    bool isNumber = false;
    options.click = value.toInt(&isNumber);
    if (!isNumber || *options.click < 0)
        options.error = QStringLiteral("option --click needs a number of milliseconds");
}

void readSpeed(const QString& value, Options& options)
{
    const std::optional<Pace> pace = readPace(value);
    options.pace = pace.value_or(Pace());
    if (!pace.has_value())
        options.error = QStringLiteral("option --speed needs a factor above 0, or instant");
}

void readFail(const QString& value, Options& options)
{
    const std::optional<PlannedFailure> failure = readFailure(value);
    if (failure.has_value())
        options.failures.push_back(*failure);
    else
        options.error =
            QStringLiteral("option --fail needs a task and a share, as in \"FormatPartition after 40%\"");
}

void readFile(QString& file, const QString& option, QStringList& rest, Options& options)
{
    file = takeValue(rest, option, options);
    if (file.isEmpty() && options.error.isEmpty())
        options.error = QStringLiteral("option %1 needs a file").arg(option);
}

bool readFlag(const QString& option, Options& options)
{
    if (option == QLatin1String("--headless"))
        options.headless = true;
    else if (option == QLatin1String("--exit-with-agent"))
        options.exitWithAgent = true;
    else if (option == QLatin1String("--scan"))
        options.scan = true;
    else if (option == QLatin1String("--check-host"))
        options.checkHost = true;
    else if (option == QLatin1String("--start-guides"))
        options.startGuides = true;
    else if (option == QLatin1String("--verbose"))
        options.verbose = true;
    else if (option == QLatin1String("--help"))
        options.help = true;
    else
        return false;
    return true;
}

void readValue(const QString& option, QStringList& rest, Options& options)
{
    if (option == QLatin1String("--machine"))
        options.machine = takeValue(rest, option, options);
    else if (option == QLatin1String("--agent"))
        options.agent = takeValue(rest, option, options);
    else if (option == QLatin1String("--answer"))
        readAnswer(takeValue(rest, option, options), options);
    else if (option == QLatin1String("--win11"))
        readWin11(takeValue(rest, option, options), options);
    else if (option == QLatin1String("--speed"))
        readSpeed(takeValue(rest, option, options), options);
    else if (option == QLatin1String("--fail"))
        readFail(takeValue(rest, option, options), options);
    else if (option == QLatin1String("--transcript"))
        readFile(options.transcript, option, rest, options);
    else if (option == QLatin1String("--save"))
        readFile(options.save, option, rest, options);
    else if (option == QLatin1String("--theme"))
        readTheme(takeValue(rest, option, options), options);
    else if (option == QLatin1String("--language"))
        readLanguage(takeValue(rest, option, options), options);
    else if (option == QLatin1String("--screenshot"))
        options.screenshot = takeValue(rest, option, options);
    else if (option == QLatin1String("--click"))
        readClick(takeValue(rest, option, options), options);
    else
        options.error = QStringLiteral("unknown option %1 (--help lists them)").arg(option);
}

} // namespace

Options readOptions(const QStringList& arguments)
{
    Options options;
    QStringList rest = arguments;
    while (!rest.isEmpty() && options.error.isEmpty()) {
        QString option = rest.takeFirst();
        const int equals = option.indexOf(QLatin1Char('='));
        if (option.startsWith(QLatin1String("--")) && equals > 0) {
            rest.prepend(option.mid(equals + 1));
            option.truncate(equals);
        }
        if (!readFlag(option, options))
            readValue(option, rest, options);
    }
    if (options.error.isEmpty() && options.exitWithAgent && options.agent.isEmpty())
        options.error = QStringLiteral("option --exit-with-agent needs --agent");
    return options;
}

QString helpText()
{
    return QStringLiteral(R"(usage: zorhost [options]

Runs the agent service on a simulated machine. Nothing real is touched.

  --machine NAME      laptop, desktop or server; or a JSON file; or "system", which
                      describes this computer (default: laptop)
  --headless          no window, even if there is a display
  --agent COMMAND     starts the command through the shell once the service answers,
                      with AGENT_NATIVE_PORT and AGENT_CHAT_PORT in its environment
  --exit-with-agent   ends when the command ends, with its exit code
  --scan              starts one recommendation scan and prints what it recommends
  --answer N          answers a recommendation with its button N, counted from 0
  --win11 on|off      switches the Windows 11 checker
  --theme light|dark|system
                      the window's colours (default: system)
  --language CODE     language of the window and of recommendations: en or de (default: en)
  --screenshot FILE   draws the window without a display and writes it as PNG: when the
                      agent of --agent has ended, else when the scan of --scan has, else
                      when the service answers; without --agent it then ends
  --click MS          clicks a dialog away after so many milliseconds (default: 1500
                      without a window, never with one)
  --check-host        prints what the library looks for in a host and whether it is
                      there, and ends: 0 if all is, 1 if not
  --speed FACTOR      runs tasks so many times faster; "instant": in no time. At 1 a task
                      takes 0.2 s and moves 4 GiB a second (default: 1)
  --fail "TASK after N%"
                      makes the next task of that name fail there; may stand several times
  --start-guides      starts the work of each guide as it opens, as a user would
  --transcript FILE   writes what happens, one JSON object on a line
  --save FILE         writes the machine at the end, as JSON that --machine reads
  --verbose           shows the library's debug messages on standard error
  --help              this text

Exit codes: 0 ended by SIGINT, SIGTERM or the window; 1 the service could not listen;
2 bad option, bad machine, missing library or a file that cannot be written; with --exit-with-agent the agent's.)");
}

QString machineFile(const QString& machine, const QString& machinesFolder)
{
    if (QFileInfo(machine).isFile())
        return machine;
    const QString shipped = machinesFolder + QLatin1Char('/') + machine + QLatin1String(".json");
    const bool isPlainName = !machine.isEmpty() && !machine.contains(QLatin1Char('/'));
    return isPlainName && QFileInfo(shipped).isFile() ? shipped : QString();
}

} // namespace host
