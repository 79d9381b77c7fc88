#include "agent/Options.h"

#include "agent/Failure.h"
#include "agent/OptionTable.h"
#include "agent/Ports.h"

#include <QtCore/QCommandLineParser>

#include <cmath>

namespace zorcall {

namespace {

constexpr double kMaxSeconds = 24 * 60 * 60;

void declare(QCommandLineParser* parser)
{
    for (const OptionRow& row : optionTable()) {
        QStringList names{QLatin1String(row.name)};
        if (names.first() == QLatin1String("help"))
            names.append(QStringLiteral("h"));
        parser->addOption(
            QCommandLineOption(names, QString(), QLatin1String(row.takesValue() ? row.value : "")));
    }
}

bool isSet(const QCommandLineParser& parser, const char* name)
{
    return parser.isSet(QLatin1String(name));
}

// Empty for a missing option.
QString valueOf(const QCommandLineParser& parser, const char* name)
{
    const QStringList values = parser.values(QLatin1String(name));
    if (values.size() > 1)
        throw Failure(Usage, std::string("--") + name + " is given twice");
    if (values.size() == 1 && values.first().isEmpty())
        throw Failure(Usage, std::string("--") + name + " requires a value");
    return values.value(0);
}

// 0 if the service must be searched. Only this computer is searched.
std::uint16_t choosePort(const Options& options, const QString& nativePort)
{
    if (!options.port.isEmpty())
        return readPort(options.port, "--port");
    if (!nativePort.isEmpty())
        return readPort(nativePort, "AGENT_NATIVE_PORT");
    if (!options.host.isEmpty())
        throw Failure(Usage, "missing port: --host requires --port or AGENT_NATIVE_PORT");
    return 0;
}

std::chrono::milliseconds readSeconds(const QString& text, const char* option, double least)
{
    bool isNumber = false;
    const double seconds = text.toDouble(&isNumber);
    if (!isNumber || !std::isfinite(seconds) || seconds < least || seconds > kMaxSeconds) {
        const std::string limit = QString::number(least).toStdString();
        throw Failure(Usage, std::string(option) + " is '" + text.toStdString() +
                                 "', not a number of seconds from " + limit + " to 86400");
    }
    return std::chrono::milliseconds(std::llround(seconds * 1000));
}

// No method has the name of a command.
Options::Mode commandMode(const QString& word)
{
    if (word == QLatin1String("watch"))
        return Options::Watch;
    if (word == QLatin1String("completion"))
        return Options::Completion;
    // Called by the completions with the incomplete line.
    return word == QLatin1String("__complete") ? Options::Candidates : Options::Call;
}

Options::Mode readMode(const QCommandLineParser& parser)
{
    if (isSet(parser, "version"))
        return Options::Version;
    if (isSet(parser, "help"))
        return Options::Help;
    if (isSet(parser, "list"))
        return Options::List;
    if (isSet(parser, "script"))
        return Options::Script;
    return commandMode(parser.positionalArguments().value(0));
}

void checkCombination(const Options& options)
{
    const bool isCall = options.mode == Options::Call;
    const bool isScript = options.mode == Options::Script;
    const bool isWatch = options.mode == Options::Watch;
    if (isCall && options.words.empty())
        throw Failure(Usage,
                      "missing method: 'zorcall --list' lists the methods, 'zorcall --help' the options");
    if (isScript && !options.words.empty())
        throw Failure(Usage, "--script reads its calls from the file and cannot be combined with a method");
    if (isScript && options.gated)
        throw Failure(Usage, "with --script, write --gated at the beginning of a line of the script");
    if (options.json && (options.table || options.noHeaders))
        throw Failure(Usage, "--json cannot be combined with --table or --no-headers");
    if (isCall && options.patient && !options.gated)
        throw Failure(Usage, "--patient requires --gated or --script");
    if (isWatch && options.words.size() > 1)
        throw Failure(Usage, "watch accepts no arguments");
    if (isWatch && (options.gated || options.patient || options.allowMissing))
        throw Failure(Usage, "--gated, --patient and --allow-missing require a method");
    const bool isCompletion = options.mode == Options::Completion || options.mode == Options::Candidates;
    if (isCompletion && options.words.size() != 2)
        throw Failure(Usage, "completion requires the name of a shell: bash or zsh");
    if (!isWatch && !options.interval.isEmpty())
        throw Failure(Usage, "--interval requires watch");
    if ((options.mode == Options::List || options.mode == Options::Help) && options.words.size() > 1)
        throw Failure(Usage, "--list and --help accept only one method");
}

std::vector<std::string> readWords(const QStringList& arguments)
{
    std::vector<std::string> words;
    for (const QString& argument : arguments)
        words.push_back(argument.toStdString());
    return words;
}

} // namespace

Options parseOptions(const QStringList& arguments)
{
    for (const QString& argument : arguments) {
        if (argument.contains(QChar::ReplacementCharacter))
            throw Failure(Usage, "an argument is not UTF-8: " + argument.toStdString());
    }
    QCommandLineParser parser;
    declare(&parser);
    if (!parser.parse(arguments))
        throw Failure(Usage, parser.errorText().toStdString() + " ('zorcall --help' shows the options)");
    Options options;
    options.mode = readMode(parser);
    options.words = readWords(parser.positionalArguments());
    options.script = valueOf(parser, "script").toStdString();
    options.host = valueOf(parser, "host");
    options.port = valueOf(parser, "port");
    options.timeout = valueOf(parser, "timeout");
    options.interval = valueOf(parser, "interval");
    options.gated = isSet(parser, "gated");
    options.patient = isSet(parser, "patient");
    options.allowMissing = isSet(parser, "allow-missing");
    options.table = isSet(parser, "table");
    options.json = isSet(parser, "json");
    options.noHeaders = isSet(parser, "no-headers");
    checkCombination(options);
    return options;
}

std::chrono::milliseconds intervalOf(const Options& options)
{
    if (options.interval.isEmpty())
        return std::chrono::milliseconds(1000);
    return readSeconds(options.interval, "--interval", 0.1);
}

Address addressOf(const Options& options, const QString& nativePort)
{
    Address address;
    address.host = options.host.isEmpty() ? std::string("localhost") : options.host.toStdString();
    address.port = choosePort(options, nativePort);
    if (!options.timeout.isEmpty())
        address.limit = readSeconds(options.timeout, "--timeout", 0.001);
    return address;
}

} // namespace zorcall
