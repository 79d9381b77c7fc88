#pragma once

#include "service/ZorHandle.h"
#include "tests/support/RecordingHost.h"

#include <QtCore/QStringList>

#include <functional>
#include <string>
#include <vector>

/// What a tool works against in these tests: the recording host, over two disks that both its own lists and
/// the inventory know, with every signal of the bridge recorded among the host's calls as
/// "aibridge.<signal>".
class ToolBench
{
    // The pause of the gate is over, so that its calls can be rows like the others.
    class OpenGate : public CZorHandle
    {
        qint64 sinceLastCall() const override { return 2000; }
    };

public:
    enum Bridge { Whole, NoEngine, NoBridge };

    ToolBench();
    RecordingHost& host() { return host_; }
    /// Builds the host and pushes the inventory; afterwards nothing is recorded yet.
    void build(Bridge bridge = Whole);
    CZorHandle& tools() { return tools_; }
    /// Runs @p work on a thread like a connection's, and keeps that thread's name for calls().
    void onConnectionThread(const std::function<void()>& work);
    /// Each recorded call as "object.member@thread[?] arguments"; the thread is "app" (application), "caller"
    /// or "other", and the mark stands where a result was asked for.
    QStringList calls();

private:
    RecordingHost host_;
    OpenGate tools_;
    QThread* caller_ = nullptr;
};

/// One tool of the service: its call, the calls that reach a host which accepts everything, and the answer.
struct ToolRow
{
    std::string method;
    /// Calls the tool and gives back its answer as text.
    std::function<QString(CZorHandle&)> call;
    QString answer;
    QStringList calls;
    /// The beginning of those entries of calls that are left out on the application thread.
    QString onlyForAgents = {};
};

/// All tools. The rows are independent of the code that they test.
std::vector<ToolRow> allToolRows();
std::vector<ToolRow> partitionPageRows();
std::vector<ToolRow> guidedRows();
std::vector<ToolRow> toolBoxRows();
std::vector<ToolRow> readAndGateRows();

/// The row of that method. Fails the process if there is none.
const ToolRow& toolRow(const std::string& method);

/// The methods whose row contains a call of that "object.member".
QStringList toolsThatCall(const QString& member);

/// Records each signal of the bridge as a call of "aibridge.<signal>".
void recordSignals(AIBridge* bridge, Recorder& recorder);

/// A call of a tool that answers with a text.
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

/// The records of the machine, as the host's lists carry them and as typed() spells them.
namespace machine {

QVariantList disks();
QVariantList inventory();

extern const char* const partitionC;
extern const char* const partitionE;
extern const char* const freeSpace;
extern const char* const disk0;
extern const char* const disk1;

} // namespace machine

/// Makes gtest print the method and not the bytes of the row.
void PrintTo(const ToolRow& row, std::ostream* out);
