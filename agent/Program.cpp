#include "agent/Program.h"

#include "agent/Client.h"
#include "agent/Completion.h"
#include "agent/Finder.h"
#include "agent/Gate.h"
#include "agent/Listing.h"
#include "agent/OptionTable.h"
#include "agent/Options.h"
#include "agent/Report.h"
#include "agent/Script.h"
#include "agent/Text.h"
#include "agent/Watch.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <optional>

namespace zorcall {

namespace {

// Tables are the default at a terminal, and JSON everywhere else.
Display displayOf(const Options& options, const Environment& environment)
{
    Display display;
    display.table = options.table || (environment.terminal && !options.json);
    display.colour = display.table && environment.colour;
    display.headers = !options.noHeaders;
    return display;
}

// @p sendsOrder: the program sends an order, or can send one.
Address locate(const Options& options, const Environment& environment, bool sendsOrder,
               std::chrono::milliseconds limit = kProbeLimit)
{
    Address address = addressOf(options, environment.nativePort);
    if (address.port != 0)
        return address;
    const Ports ports = readPorts(environment.searchedPorts, "ZORCALL_PORTS");
    const Listener found = onlyService(searchServices(Interface::builtIn(), ports, limit), ports, sendsOrder);
    address.host = found.host;
    address.port = found.port;
    return address;
}

ExitCode runCall(const Options& options, const Environment& environment, std::ostream& out)
{
    const Interface& service = Interface::builtIn();
    Call call = parseCall(service, options.words, options.allowMissing);
    if (options.gated)
        putThroughGate(&call);
    Client client(service, locate(options, environment, call.method->acts() || call.gated));
    const Display display = displayOf(options, environment);
    std::unique_ptr<Report> report;
    if (display.table)
        report = std::make_unique<TextReport>(out, service, display);
    else
        report = std::make_unique<JsonReport>(out, service, false);
    return perform(client, call, options.patient, *report);
}

ExitCode runLines(const Options& options, const Environment& environment, std::istream& lines,
                  std::ostream& out)
{
    const Interface& service = Interface::builtIn();
    Client client(service, locate(options, environment, true));
    std::unique_ptr<Report> report;
    if (options.table)
        report = std::make_unique<TableReport>(out, service, displayOf(options, environment));
    else
        report = std::make_unique<JsonReport>(out, service, true);
    const std::string name = options.script == "-" ? std::string("standard input") : options.script;
    return runScript(client, lines, {name, options.allowMissing, options.patient}, *report);
}

ExitCode runFile(const Options& options, const Environment& environment, std::istream& in, std::ostream& out)
{
    if (options.script == "-")
        return runLines(options, environment, in, out);
    // A path of bytes would be decoded with the system's code page on Windows.
    std::ifstream file(std::filesystem::u8path(options.script), std::ios::binary);
    // Opening a folder succeeds; reading it fails.
    if (!file || (file.peek() == std::ifstream::traits_type::eof() && file.bad()))
        throw Failure(Usage, options.script + " cannot be read");
    file.clear();
    return runLines(options, environment, file, out);
}

[[noreturn]] ExitCode watch(const Options& options, const Environment& environment, std::ostream& out)
{
    const std::chrono::milliseconds interval = intervalOf(options);
    watchInventory(Interface::builtIn(), locate(options, environment, false), interval,
                   displayOf(options, environment), out);
}

// A method's name prints its documentation; any other word is searched for.
void list(const Options& options, const Display& display, std::ostream& out)
{
    const Interface& service = Interface::builtIn();
    const Catalogue& catalogue = Catalogue::builtIn();
    const std::string word = options.words.empty() ? std::string() : options.words.front();
    Tools tools = catalogue.matching(word);
    if (tools.empty())
        requireMethod(service, word);
    const auto named = std::find_if(tools.begin(), tools.end(),
                                    [&](const Tool* tool) { return tool->method->name == word; });
    const bool isName = named != tools.end();
    if (isName)
        tools = {*named};
    if (options.json)
        writeToolsJson(out, tools);
    else if (isName)
        writeMethod(out, service, *tools.front());
    else if (display.table)
        writeGroups(out, catalogue, tools, display);
    else
        writeSignatures(out, tools);
}

ExitCode describe(const Options& options, const Environment& environment, std::ostream& out)
{
    const bool isMethod =
        !options.words.empty() && options.words.front() != "watch" && options.words.front() != "completion";
    if (options.mode == Options::Help && !isMethod) {
        out << manual::helpText(programManual());
        return Answered;
    }
    if (options.mode == Options::Help)
        requireMethod(Interface::builtIn(), options.words.front());
    list(options, displayOf(options, environment), out);
    return Answered;
}

// Short timeouts, because the shell waits for the candidates.
std::optional<Snapshot> readQuickly(const LineAddress& address, const Environment& environment)
{
    constexpr std::chrono::milliseconds kSearch{300};
    constexpr std::chrono::milliseconds kRead{2000};
    try {
        Options options;
        options.host = QString::fromStdString(address.host);
        options.port = QString::fromStdString(address.port);
        Address where = locate(options, environment, false, kSearch);
        where.limit = kRead;
        Client client(Interface::builtIn(), where);
        return readSnapshot(client);
    } catch (const Failure&) {
        return std::nullopt;
    }
}

// A line with an unclosed quote has no candidates. A message would overwrite the command line.
void complete(const std::string& line, const Environment& environment, std::ostream& out)
{
    const auto read = [&](const LineAddress& address) { return readQuickly(address, environment); };
    try {
        writeCandidates(out, completeLine(Catalogue::builtIn(), Interface::builtIn(), line, read));
    } catch (const Failure&) {
        return;
    }
}

ExitCode run(const Options& options, const Environment& environment, std::istream& in, std::ostream& out)
{
    switch (options.mode) {
    case Options::Call:
        return runCall(options, environment, out);
    case Options::Script:
        return runFile(options, environment, in, out);
    case Options::Watch:
        return watch(options, environment, out);
    case Options::Completion:
        out << completionScript(options.words.at(1));
        return Answered;
    case Options::Candidates:
        complete(options.words.at(1), environment, out);
        return Answered;
    case Options::Version:
        out << "zorcall " ZORCALL_VERSION "\n";
        return Answered;
    default:
        return describe(options, environment, out);
    }
}

} // namespace

int runProgram(const QStringList& arguments, const Environment& environment, std::istream& in,
               std::ostream& out, std::ostream& err)
{
    try {
        const ExitCode code = run(parseOptions(arguments), environment, in, out);
        requireWritten(out);
        return code;
    } catch (const Failure& failure) {
        err << "zorcall: " << oneLine(failure.what()) << std::endl;
        return failure.code();
    } catch (const std::exception& exception) {
        err << "zorcall: " << oneLine(exception.what()) << std::endl;
        return BadReply;
    }
}

} // namespace zorcall
