#pragma once

#include "tests/support/RecordingHost.h"
#include "tools/ZorHandle.h"

#include <QtCore/QStringList>

#include <functional>
#include <string>
#include <vector>

/// The tools on the recording host. The host's lists and the inventory contain the same two disks. Each
/// signal of the bridge is recorded among the host's calls as "aibridge.<signal>".
class ToolBench
{
    // The pause of the gate has passed, so that its calls can be rows like the others.
    class OpenGate : public CZorHandle
    {
        qint64 sinceLastCall() const override { return 2000; }
    };

public:
    enum class Bridge { Whole, NoEngine, NoBridge };

    ToolBench();
    RecordingHost& host() { return host_; }
    /// Builds the host, pushes the inventory and clears the recorder.
    void build(Bridge bridge = Bridge::Whole);
    CZorHandle& tools() { return tools_; }
    /// Runs @p work on another thread, as a connection does. calls() reports that thread as "caller".
    void onConnectionThread(const std::function<void()>& work);
    /// Each recorded call as "object.member@thread[?] arguments"; the thread is "app" (application), "caller"
    /// or "other". The question mark means that a result was requested.
    QStringList calls();

private:
    RecordingHost host_;
    OpenGate tools_;
    QThread* caller_ = nullptr;
};

/// One tool of the service: its call, the calls that a host which accepts everything receives, and the
/// answer.
struct ToolRow
{
    std::string method;
    /// Calls the tool and returns its answer as a string.
    std::function<QString(CZorHandle&)> call;
    QString answer;
    QStringList calls;
    /// Prefix of the calls that are omitted on the application thread.
    QString onlyForAgents = {};
};

/// All tools. The rows are independent of the code that they test.
std::vector<ToolRow> allToolRows();
std::vector<ToolRow> partitionPageRows();
std::vector<ToolRow> guidedRows();
std::vector<ToolRow> toolBoxRows();
std::vector<ToolRow> readAndGateRows();

/// The row of that method. Aborts if it is missing.
const ToolRow& toolRow(const std::string& method);

/// The methods whose row contains a call of that "object.member".
QStringList toolsThatCall(const QString& member);

/// Records each signal of the bridge as a call of "aibridge.<signal>".
void recordSignals(AIBridge* bridge, Recorder& recorder);

/// A call of a tool that answers with a string.
template <class... Parameters, class... Arguments>
std::function<QString(CZorHandle&)> tool(void (CZorHandle::*member)(std::string&, Parameters...),
                                         Arguments... arguments)
{
    return [=](CZorHandle& tools) {
        std::string answer = "left as it was";
        (tools.*member)(answer, arguments...);
        return QString::fromStdString(answer);
    };
}

/// The records of the machine, in the host's lists and in the format of typed().
namespace machine {

QVariantList disks();
QVariantList inventory();

extern const char* const partitionC;
extern const char* const partitionE;
extern const char* const freeSpace;
extern const char* const disk0;
extern const char* const disk1;

} // namespace machine

/// Prints the method instead of the bytes of the row.
void PrintTo(const ToolRow& row, std::ostream* out);
