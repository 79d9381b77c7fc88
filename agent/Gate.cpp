#include "agent/Gate.h"

#include "agent/JsonWriter.h"
#include "agent/RecordView.h"
#include "agent/Report.h"

#include <thread>

namespace zorcall {

const char* const kPreProcessing = "PreProcessing";
const char* const kPostProcessing = "PostProcessing";

namespace {

constexpr std::chrono::milliseconds kRetryPause{100};

Value askGate(Client& client, const Call& call, bool patient)
{
    const std::string& inProgress = client.service().constant("OPERATION_IN_PROGRESS");
    const auto end = std::chrono::steady_clock::now() + client.limit();
    for (;;) {
        Value answer = client.call(kPreProcessing, {Value{call.text}});
        const GateAnswer gate = readGateAnswer(client.service(), answer);
        const bool retry = patient && !gate.allow && gate.reasons == inProgress;
        if (!retry || std::chrono::steady_clock::now() + kRetryPause >= end)
            return answer;
        std::this_thread::sleep_for(kRetryPause);
    }
}

void closeGate(Client& client, const Call& call, const std::string& result, Report& report)
{
    const Value answer = client.call(kPostProcessing, {Value{result}});
    report.answer(call, requireMethod(client.service(), kPostProcessing), answer);
}

// PreProcessing announced the call, so PostProcessing must end it. Its own failure is discarded: the
// exception is reported.
void closeGateAfter(const ServiceException& exception, Client& client, const Call& call, Report& report)
{
    try {
        closeGate(client, call, exception.message(), report);
    } catch (const Failure&) {
        return;
    }
}

} // namespace

GateAnswer readGateAnswer(const Interface& service, const Value& taskInfo)
{
    const RecordView view(service.record("TaskInfo"), taskInfo);
    return {view.flag("allow"), view.text("reasons")};
}

ExitCode verdict(const Interface& service, const Method& method, const Value& value)
{
    if (method.acts())
        return value.text() == service.constant("TASK_QUEUED") ? Answered : Rejected;
    if (method.name == kPreProcessing)
        return readGateAnswer(service, value).allow ? Answered : Rejected;
    return Answered;
}

ExitCode perform(Client& client, const Call& call, bool patient, Report& report)
{
    const Interface& service = client.service();
    if (call.gated) {
        const Value gate = askGate(client, call, patient);
        report.answer(call, requireMethod(service, kPreProcessing), gate);
        if (!readGateAnswer(service, gate).allow)
            return Rejected;
    }
    Value answer;
    try {
        answer = client.call(*call.method, call.arguments);
    } catch (const ServiceException& exception) {
        if (call.gated)
            closeGateAfter(exception, client, call, report);
        throw;
    }
    report.answer(call, *call.method, answer);
    if (call.gated) {
        const bool isString = call.method->result.kind == Kind::String;
        closeGate(client, call, isString ? answer.text() : toJson(service, call.method->result, answer),
                  report);
    }
    return verdict(service, *call.method, answer);
}

} // namespace zorcall
