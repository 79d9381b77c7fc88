#pragma once

#include "host/udisks/UsedSpace.h"

#include <QtCore/QProcess>
#include <QtDBus/QDBusUnixFileDescriptor>

#include <functional>

namespace host {

/// One run of a tool. Application thread.
///
/// The tool gets the device as a descriptor, because the disk service may open devices that the user may not.
class ToolProcess : public QProcess
{
    Q_OBJECT

public:
    using Done = std::function<void(std::optional<UsedSpace>)>;

    /// @p done: called once, and never if the object is destroyed before.
    ToolProcess(UsedSpaceTool tool, const QDBusUnixFileDescriptor& device, Done done);
    /// Kills the tool and waits for its end.
    ~ToolProcess() override;

    /// The result is empty if the tool is missing, fails or runs longer than @p limitMs milliseconds. done
    /// can be called before the return.
    void run(int limitMs);

protected:
    void setupChildProcess() override;

private:
    void end(bool succeeded);

    UsedSpaceTool tool_;
    QDBusUnixFileDescriptor device_;
    Done done_;
};

} // namespace host
