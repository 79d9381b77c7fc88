#include "agent/Script.h"

#include "agent/Gate.h"
#include "agent/Report.h"
#include "agent/Words.h"

#include <algorithm>
#include <istream>

namespace zorcall {

std::optional<Call> parseLine(const Interface& service, const std::string& line, bool allowMissing)
{
    std::vector<std::string> words = splitWords(line);
    const bool gated = !words.empty() && words.front() == "--gated";
    if (gated)
        words.erase(words.begin());
    if (words.empty() && gated)
        throw Failure(Usage, "--gated requires a method");
    if (words.empty())
        return std::nullopt;
    Call call = parseCall(service, words, allowMissing);
    if (gated)
        putThroughGate(&call);
    return call;
}

ExitCode runScript(Client& client, std::istream& lines, const ScriptOptions& options, Report& report)
{
    ExitCode highest = Answered;
    std::string line;
    for (int number = 1; std::getline(lines, line); ++number) {
        try {
            const std::optional<Call> call = parseLine(client.service(), line, options.allowMissing);
            if (!call)
                continue;
            report.begin(*call, number);
            highest = std::max(highest, perform(client, *call, options.patient, report));
        } catch (const Failure& failure) {
            throw Failure(failure.code(),
                          options.name + " line " + std::to_string(number) + ": " + failure.what());
        }
    }
    if (lines.bad())
        throw Failure(Usage, options.name + " cannot be read");
    return highest;
}

} // namespace zorcall
