#include "agent/Report.h"

#include "agent/Failure.h"
#include "agent/Gate.h"
#include "agent/JsonWriter.h"
#include "agent/RecordTable.h"
#include "agent/Text.h"

#include <algorithm>
#include <iomanip>
#include <ostream>

namespace zorcall {

namespace {

std::string summary(const Interface& service, const Method& method, const Value& value)
{
    if (method.name == kPreProcessing) {
        const GateAnswer gate = readGateAnswer(service, value);
        return gate.allow ? "allowed" : "rejected by the gate: " + oneLine(gate.reasons);
    }
    switch (method.result.kind) {
    case Kind::String:
        return oneLine(value.text());
    case Kind::Record:
        return "1 " + method.result.record;
    case Kind::List:
        return std::to_string(value.parts().size()) + " " + method.result.record;
    default:
        return toJson(service, method.result, value);
    }
}

std::size_t widestName(const Interface& service)
{
    std::size_t width = 0;
    for (const Method& method : service.methods())
        width = std::max(width, method.name.size());
    return width;
}

} // namespace

void requireWritten(std::ostream& out)
{
    out.flush();
    if (!out)
        throw Failure(NoOutput, "the answer cannot be written to standard output");
}

JsonReport::JsonReport(std::ostream& out, const Interface& service, bool announce)
    : out_(out), service_(service), announce_(announce)
{
}

void JsonReport::begin(const Call& call, int)
{
    if (!announce_)
        return;
    out_ << "> " << (call.gated ? "--gated " : "") << call.text << '\n';
    requireWritten(out_);
}

void JsonReport::answer(const Call& call, const Method& method, const Value& value)
{
    if (call.gated)
        out_ << "{\"" << method.name << "\": ";
    writeJson(out_, service_, method.result, value);
    out_ << (call.gated ? "}\n" : "\n");
    requireWritten(out_);
}

TextReport::TextReport(std::ostream& out, const Interface& service, const Display& display)
    : out_(out), service_(service), display_(display)
{
}

void TextReport::begin(const Call&, int) {}

void TextReport::answer(const Call& call, const Method& method, const Value& value)
{
    if (method.result.kind == Kind::List) {
        writeRecords(out_, service_, method.result.entry(), value, display_);
    } else if (method.result.kind == Kind::Record && method.name != kPreProcessing) {
        writeRecord(out_, service_.record(method.result.record), value, display_);
    } else {
        const bool isRejection = verdict(service_, method, value) == Rejected;
        out_ << (call.gated ? method.name + ": " : std::string())
             << styled(summary(service_, method, value), isRejection ? Style::Red : Style::Green, display_)
             << '\n';
    }
    requireWritten(out_);
}

TableReport::TableReport(std::ostream& out, const Interface& service, const Display& display)
    : out_(out), service_(service), toolWidth_(widestName(service))
{
    if (!display.headers)
        return;
    out_ << "line  " << std::left << std::setw(static_cast<int>(toolWidth_)) << "tool"
         << "  answer\n";
    requireWritten(out_);
}

void TableReport::begin(const Call&, int line)
{
    line_ = line;
}

void TableReport::answer(const Call& call, const Method& method, const Value& value)
{
    // The row of a gated call is the tool's answer, or the gate's rejection.
    const bool isTool = &method == call.method;
    if (!isTool && (method.name != kPreProcessing || readGateAnswer(service_, value).allow))
        return;
    out_ << std::right << std::setw(4) << line_ << "  " << std::left
         << std::setw(static_cast<int>(toolWidth_)) << call.method->name << "  "
         << summary(service_, method, value) << '\n';
    requireWritten(out_);
}

} // namespace zorcall
