#include "host/Options.h"

#include "host/machine/Functions.h"
#include "host/objects/MultiLanguage.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QFileInfo>
#include <QtCore/QMap>
#include <QtCore/QRegularExpression>

namespace host {

namespace {

// Set once: the first error of a command line is the one that is printed.
void reject(Options* options, const QString& error)
{
    if (options->error.isEmpty())
        options->error = error;
}

// The window's own minimum, and less than the limit of Qt.
constexpr QSize kMinWindow(640, 480);
constexpr QSize kMaxWindow(16000, 16000);

std::optional<int> readCount(const QString& value)
{
    bool isNumber = false;
    const int count = value.toInt(&isNumber);
    return isNumber && count >= 0 ? std::optional<int>(count) : std::nullopt;
}

void readImage(const QString& value, Options* options)
{
    options->images.append(value);
    if (value.isEmpty())
        reject(options, QStringLiteral("option --image needs a file"));
}

void readDevice(const QString& value, Options* options)
{
    options->devices.append(value);
    if (value.isEmpty())
        reject(options, QStringLiteral("option --device needs a device file"));
}

void readAnswer(const QString& value, Options* options)
{
    options->answer = readCount(value).value_or(-1);
    if (options->answer < 0)
        reject(options, QStringLiteral("option --answer needs the number of a button, counted from 0"));
}

void readWin11(const QString& value, Options* options)
{
    options->win11 = value == QLatin1String("on");
    if (value != QLatin1String("on") && value != QLatin1String("off"))
        reject(options, QStringLiteral("option --win11 needs on or off"));
}

void readTheme(const QString& value, Options* options)
{
    options->theme = themeNamed(value);
    if (!options->theme.has_value())
        reject(options, QStringLiteral("option --theme needs light, dark or system"));
}

void readSize(const QString& value, Options* options)
{
    static const QRegularExpression pattern(QStringLiteral("^(\\d{3,5})x(\\d{3,5})$"));
    const QRegularExpressionMatch match = pattern.match(value);
    const QSize size(match.captured(1).toInt(), match.captured(2).toInt());
    options->size = size;
    if (size.boundedTo(kMaxWindow).expandedTo(kMinWindow) != size)
        reject(options,
               QStringLiteral("option --size needs a width and a height from 640x480 to 16000x16000"));
}

void readLanguage(const QString& value, Options* options)
{
    const QStringList languages = MultiLanguage::languages();
    options->language = value;
    if (!languages.contains(value))
        reject(
            options,
            QStringLiteral("option --language needs one of: %1").arg(languages.join(QStringLiteral(", "))));
}

void readClick(const QString& value, Options* options)
{
    options->click = readCount(value);
    if (!options->click.has_value())
        reject(options, QStringLiteral("option --click needs a number of milliseconds"));
}

void readSpeed(const QString& value, Options* options)
{
    const std::optional<Pace> pace = readPace(value);
    options->pace = pace.value_or(Pace());
    if (!pace.has_value())
        reject(options, QStringLiteral("option --speed needs a factor above 0, or instant"));
}

void readFail(const QString& value, Options* options)
{
    const std::optional<PlannedFailure> failure = readFailure(value);
    const QString unknown = unknownTask(value);
    if (failure.has_value())
        options->failures.push_back(*failure);
    else if (!unknown.isEmpty())
        reject(options, QStringLiteral("option --fail: %1 is not a task; the tasks are %2")
                            .arg(unknown, taskNames().join(QStringLiteral(", "))));
    else
        reject(options,
               QStringLiteral("option --fail needs a task and a share, as in \"FormatPartition after 40%\""));
}

void readTranscript(const QString& value, Options* options)
{
    options->transcript = value;
    if (value.isEmpty())
        reject(options, QStringLiteral("option --transcript needs a file"));
}

void readSave(const QString& value, Options* options)
{
    options->save = value;
    if (value.isEmpty())
        reject(options, QStringLiteral("option --save needs a file"));
}

// One row for each option. A flag has no value name, and its reader ignores the value.
struct Row
{
    const char* name;
    const char* valueName;
    void (*read)(const QString& value, Options* options);
    const char* help;
};

const Row kRows[] = {
    {"machine", "NAME", [](const QString& value, Options* options) { options->machine = value; },
     "laptop, desktop or server; or a JSON file; or \"system\", which\n"
     "describes this computer (default: desktop)"},
    {"image", "FILE", readImage,
     "works on a disk image through UDisks2 instead of simulating: its\n"
     "partitions and data really change; can be repeated"},
    {"device", "FILE", readDevice,
     "works on a whole disk such as /dev/sdb through UDisks2; each order\n"
     "that destroys data waits for a confirmation in the window; can be\n"
     "repeated"},
    {"unattended", nullptr, [](const QString&, Options* options) { options->unattended = true; },
     "orders on a --device destroy data without a confirmation"},
    {"headless", nullptr, [](const QString&, Options* options) { options->headless = true; },
     "no window, even if there is a display"},
    {"window", nullptr, [](const QString&, Options* options) { options->window = true; },
     "shows the window; a missing display is an error. Without this option\n"
     "and without a display, the program runs without a window"},
    {"agent", "COMMAND", [](const QString& value, Options* options) { options->agent = value; },
     "starts the command through the shell once the service answers,\n"
     "with AGENT_NATIVE_PORT and AGENT_CHAT_PORT in its environment"},
    {"exit-with-agent", nullptr, [](const QString&, Options* options) { options->exitWithAgent = true; },
     "ends when the command ends, with its exit code"},
    {"scan", nullptr, [](const QString&, Options* options) { options->scan = true; },
     "starts one recommendation scan and prints the recommendation"},
    {"answer", "N", readAnswer, "answers a recommendation with its button N, counted from 0"},
    {"scan-state", "FOLDER", [](const QString& value, Options* options) { options->scanState = value; },
     "keeps recscan.info, the state of scans, in this folder (default: a\n"
     "scratch folder, so that each run starts with the first case)"},
    {"win11", "on|off", readWin11, "switches the Windows 11 checker"},
    {"theme", "light|dark|system", readTheme,
     "the window's colours (default: those chosen in the window in an\n"
     "earlier run, otherwise system)"},
    {"size", "WIDTHxHEIGHT", readSize,
     "the window's size in pixels, at least 640x480, before the scale\n"
     "factor of the display (default: that of an earlier run, otherwise\n"
     "1280x720)"},
    {"language", "CODE", readLanguage,
     "language of the window and of recommendations: en or de (default: en)"},
    {"screenshot", "FILE", [](const QString& value, Options* options) { options->screenshot = value; },
     "draws the window without a display and writes it as PNG: when the\n"
     "agent of --agent has ended, else when the scan of --scan has, else\n"
     "when the service answers; without --agent it then ends"},
    {"click", "MS", readClick,
     "closes a dialog after this many milliseconds (default: 1500\n"
     "without a window, never with one)"},
    {"check-host", nullptr, [](const QString&, Options* options) { options->checkHost = true; },
     "prints each object that the library looks for in a host and\n"
     "whether it exists, and ends: 0 if all exist, 1 if not"},
    {"speed", "FACTOR", readSpeed,
     "runs tasks this many times faster; \"instant\" takes no time. At 1 a\n"
     "task takes 0.2 s and moves 4 GiB per second (default: 1)"},
    {"fail", "\"TASK after N%\"", readFail,
     "makes the next task of that name fail at that share; can be repeated"},
    {"start-guides", nullptr, [](const QString&, Options* options) { options->startGuides = true; },
     "starts the work of each guide as it opens, as a user would"},
    {"transcript", "FILE", readTranscript, "writes the events, one JSON object per line"},
    {"save", "FILE", readSave, "writes the machine at the end, as JSON that --machine reads"},
    {"verbose", nullptr, [](const QString&, Options* options) { options->verbose = true; },
     "shows the library's debug messages on standard error"},
    {"help", nullptr, [](const QString&, Options* options) { options->help = true; }, "prints this help"},
    {"version", nullptr, [](const QString&, Options* options) { options->version = true; },
     "prints the version"},
};

bool isHelp(const Row& row)
{
    return row.name == std::string("help");
}

void declare(QCommandLineParser* parser)
{
    for (const Row& row : kRows) {
        QStringList names{QLatin1String(row.name)};
        if (isHelp(row))
            names.append(QStringLiteral("h"));
        parser->addOption(QCommandLineOption(names, QString(), QLatin1String(row.valueName)));
    }
}

QString parseError(const QCommandLineParser& parser)
{
    const QStringList unknown = parser.unknownOptionNames();
    if (!unknown.isEmpty())
        return QStringLiteral("unknown option %1 (--help lists them)").arg(unknown.first());
    return parser.errorText();
}

// Each occurrence of an option is read: the last one counts, and an invalid earlier one is still an error.
void readRow(const QCommandLineParser& parser, const Row& row, Options* options)
{
    const QString name = QLatin1String(row.name);
    if (row.valueName == nullptr) {
        if (parser.isSet(name))
            row.read(QString(), options);
        return;
    }
    for (const QString& value : parser.values(name))
        row.read(value, options);
}

struct Exclusion
{
    const char* option;
    std::vector<const char*> others;
};

// Each would have no effect together with the other, or would contradict it.
const Exclusion kExclusions[] = {
    {"window", {"headless", "screenshot"}},
    {"size", {"check-host"}},
    {"check-host", {"agent", "save", "scan", "screenshot", "transcript", "window"}},
    {"machine", {"device", "image"}},
    {"speed", {"device", "image"}},
    {"fail", {"device", "image"}},
};

void rejectExclusions(const QCommandLineParser& parser, Options* options)
{
    for (const Exclusion& exclusion : kExclusions) {
        for (const char* other : exclusion.others) {
            if (parser.isSet(QLatin1String(exclusion.option)) && parser.isSet(QLatin1String(other)))
                reject(options, QStringLiteral("options --%1 and --%2 exclude each other")
                                    .arg(QLatin1String(exclusion.option), QLatin1String(other)));
        }
    }
}

// A file that the host writes would replace the content of the image.
void rejectOutputToDisks(Options* options)
{
    const QMap<QString, QString> outputs = {{QStringLiteral("save"), options->save},
                                            {QStringLiteral("screenshot"), options->screenshot},
                                            {QStringLiteral("transcript"), options->transcript}};
    const QStringList disks = options->images + options->devices;
    for (auto it = outputs.begin(); it != outputs.end(); ++it) {
        const QString file = QFileInfo(*it).canonicalFilePath();
        for (const QString& disk : disks) {
            if (!file.isEmpty() && QFileInfo(disk).canonicalFilePath() == file)
                reject(options,
                       QStringLiteral("option --%1 names a disk of the host: %2").arg(it.key(), disk));
        }
    }
}

void checkRealDisks(Options* options)
{
    if (options->unattended && options->devices.isEmpty())
        reject(options, QStringLiteral("option --unattended needs --device"));
    if (options->hasRealDisks())
        rejectOutputToDisks(options);
}

std::string termOf(const Row& row)
{
    const std::string value = row.valueName == nullptr ? std::string() : ' ' + std::string(row.valueName);
    return (isHelp(row) ? "-h, --" : "--") + std::string(row.name) + value;
}

} // namespace

Options readOptions(const QStringList& arguments)
{
    QCommandLineParser parser;
    declare(&parser);
    Options options;
    if (!parser.parse(QStringList(QStringLiteral("zorhost")) + arguments))
        reject(&options, parseError(parser));
    if (!parser.positionalArguments().isEmpty())
        reject(&options, QStringLiteral("unexpected argument %1 (--help lists the options)")
                             .arg(parser.positionalArguments().first()));
    for (const Row& row : kRows)
        readRow(parser, row, &options);
    rejectExclusions(parser, &options);
    checkRealDisks(&options);
    if (options.exitWithAgent && options.agent.isEmpty())
        reject(&options, QStringLiteral("option --exit-with-agent needs --agent"));
    if (options.answer >= 0 && !options.scan)
        reject(&options, QStringLiteral("option --answer needs --scan"));
    return options;
}

manual::Manual programManual()
{
    manual::Section options{"Options", {}};
    for (const Row& row : kRows)
        options.rows.push_back({termOf(row), row.help});
    const manual::Section exitCodes{
        "Exit codes",
        {{"0", "ended by SIGINT, SIGTERM or the window"},
         {"1", "the service could not listen"},
         {"2", "invalid option or machine, a disk that is missing or in use, missing library, a display that "
               "cannot be opened, or a file that cannot be written"},
         {"N", "with --exit-with-agent, the agent's exit code"}}};
    return {"zorhost",
            "sandbox host of the agent service of a disk and partition manager",
            {"[options]"},
            "Runs the agent service on a simulated machine, or on the disk images and disks that --image and "
            "--device name. Without these options no real disk is changed.",
            {options, exitCodes},
            {"zorcall", "aibridge-mcp"}};
}

QString helpText()
{
    return QString::fromStdString(manual::helpText(programManual()));
}

QString machineFile(const QString& machine, const QString& machinesFolder)
{
    if (QFileInfo::exists(machine) && !QFileInfo(machine).isDir())
        return machine;
    const QString shipped = machinesFolder + QLatin1Char('/') + machine + QLatin1String(".json");
    const bool isPlainName = !machine.isEmpty() && !machine.contains(QLatin1Char('/'));
    return isPlainName && QFileInfo(shipped).isFile() ? shipped : QString();
}

} // namespace host
