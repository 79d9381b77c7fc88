#include "agent/Program.h"

#include "agent/Client.h"
#include "agent/Gate.h"
#include "agent/Listing.h"
#include "agent/OptionTable.h"
#include "agent/Options.h"
#include "agent/Report.h"
#include "agent/Script.h"
#include "agent/Text.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>

namespace zorcall {

namespace {

ExitCode runCall(const Options& options, const QString& nativePort, std::ostream& out)
{
    const Interface& service = Interface::builtIn();
    Call call = parseCall(service, options.words, options.allowMissing);
    if (options.gated)
        putThroughGate(&call);
    Client client(service, addressOf(options, nativePort));
    JsonReport report(out, service, false);
    return perform(client, call, options.patient, report);
}

ExitCode runLines(const Options& options, const QString& nativePort, std::istream& lines, std::ostream& out)
{
    const Interface& service = Interface::builtIn();
    Client client(service, addressOf(options, nativePort));
    std::unique_ptr<Report> report;
    if (options.table)
        report = std::make_unique<TableReport>(out, service);
    else
        report = std::make_unique<JsonReport>(out, service, true);
    const std::string name = options.script == "-" ? std::string("standard input") : options.script;
    return runScript(client, lines, {name, options.allowMissing, options.patient}, *report);
}

ExitCode runFile(const Options& options, const QString& nativePort, std::istream& in, std::ostream& out)
{
    if (options.script == "-")
        return runLines(options, nativePort, in, out);
    // A path of bytes would be decoded with the system's code page on Windows.
    std::ifstream file(std::filesystem::u8path(options.script), std::ios::binary);
    // Opening a folder succeeds; reading it fails.
    if (!file || (file.peek() == std::ifstream::traits_type::eof() && file.bad()))
        throw Failure(Usage, options.script + " cannot be read");
    file.clear();
    return runLines(options, nativePort, file, out);
}

ExitCode describe(const Options& options, std::ostream& out)
{
    const Interface& service = Interface::builtIn();
    if (!options.words.empty())
        writeMethod(out, service, requireMethod(service, options.words.front()));
    else if (options.mode == Options::Help)
        out << manual::helpText(programManual());
    else
        writeList(out, service);
    return Answered;
}

ExitCode run(const Options& options, const QString& nativePort, std::istream& in, std::ostream& out)
{
    switch (options.mode) {
    case Options::Call:
        return runCall(options, nativePort, out);
    case Options::Script:
        return runFile(options, nativePort, in, out);
    case Options::Version:
        out << "zorcall " ZORCALL_VERSION "\n";
        return Answered;
    default:
        return describe(options, out);
    }
}

} // namespace

int runProgram(const QStringList& arguments, const QString& nativePort, std::istream& in, std::ostream& out,
               std::ostream& err)
{
    try {
        const ExitCode code = run(parseOptions(arguments), nativePort, in, out);
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
