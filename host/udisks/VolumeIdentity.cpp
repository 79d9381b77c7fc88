#include "host/udisks/VolumeIdentity.h"

#include <QtCore/QProcess>
#include <QtCore/QRandomGenerator>
#include <QtCore/QStringList>
#include <QtCore/QUuid>

#include <fcntl.h>

#include <functional>
#include <map>
#include <vector>

namespace host {

namespace {

constexpr int kPollMs = 100;

// A tool and the arguments before and after the device.
struct Tool
{
    QString program;
    QStringList before;
    QStringList after;
    int highestExitCode = 0;
};
using Tools = std::vector<Tool>;

QString newSerial()
{
    return QStringLiteral("%1")
        .arg(QRandomGenerator::system()->generate(), 8, 16, QLatin1Char('0'))
        .toUpper();
}

Tools toolsOfExt()
{
    // tune2fs requires a check after the last mount. The exit code 1 of e2fsck means that it repaired errors.
    return {{QStringLiteral("e2fsck"), {QStringLiteral("-f"), QStringLiteral("-p")}, {}, 1},
            {QStringLiteral("tune2fs"), {QStringLiteral("-U"), QStringLiteral("random")}, {}}};
}

Tools toolsOfNtfs()
{
    return {{QStringLiteral("ntfslabel"), {QStringLiteral("--new-serial")}, {}}};
}

Tools toolsOfFat()
{
    return {{QStringLiteral("fatlabel"), {QStringLiteral("-i")}, {newSerial()}}};
}

Tools toolsOfExfat()
{
    return {{QStringLiteral("tune.exfat"), {QStringLiteral("-I"), QStringLiteral("0x") + newSerial()}, {}}};
}

Tools toolsOfSwap()
{
    const QString uuid = QUuid::createUuid().toString(QUuid::WithoutBraces);
    return {{QStringLiteral("swaplabel"), {QStringLiteral("-U"), uuid}, {}}};
}

const std::map<QString, Tools (*)()>& toolsByType()
{
    static const std::map<QString, Tools (*)()> table = {
        {QStringLiteral("ext2"), toolsOfExt},  {QStringLiteral("ext3"), toolsOfExt},
        {QStringLiteral("ext4"), toolsOfExt},  {QStringLiteral("ntfs"), toolsOfNtfs},
        {QStringLiteral("vfat"), toolsOfFat},  {QStringLiteral("exfat"), toolsOfExfat},
        {QStringLiteral("swap"), toolsOfSwap},
    };
    return table;
}

// A child process that keeps a descriptor of its parent.
class DescriptorProcess : public QProcess
{
public:
    explicit DescriptorProcess(int descriptor) : descriptor_(descriptor) {}

protected:
    void setupChildProcess() override { ::fcntl(descriptor_, F_SETFD, 0); }

private:
    int descriptor_;
};

Rejection failed(const QString& message)
{
    return Text(QT_TRANSLATE_NOOP("Sandbox", "The identifier of the copy cannot be changed: %1"), {message});
}

Rejection runTool(const Tool& tool, int descriptor, const WorkControl& control)
{
    DescriptorProcess process(descriptor);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C"));
    environment.insert(QStringLiteral("PATH"), QStringLiteral("/usr/sbin:/sbin:/usr/bin:/bin"));
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);
    // The descriptor stays with the device that was copied; a device file can belong to another one later.
    const QString device = QStringLiteral("/proc/self/fd/%1").arg(descriptor);
    process.start(QStringLiteral("env"),
                  QStringList{tool.program} + tool.before + QStringList{device} + tool.after,
                  QIODevice::ReadOnly);
    // A check of a large file system takes minutes.
    while (process.state() != QProcess::NotRunning && !process.waitForFinished(kPollMs)) {
        if (control.cancelled)
            process.kill();
    }
    if (control.cancelled)
        return kAccepted;
    if (process.exitStatus() == QProcess::NormalExit && process.exitCode() <= tool.highestExitCode)
        return kAccepted;
    return failed(QString::fromLocal8Bit(process.readAll()).simplified());
}

} // namespace

bool canRenewIdentity(const QString& type)
{
    return type.isEmpty() || toolsByType().count(type) > 0;
}

Rejection renewIdentity(const QString& type, int descriptor, const WorkControl& control)
{
    const auto tools = toolsByType().find(type);
    if (tools == toolsByType().end())
        return kAccepted;
    for (const Tool& tool : tools->second()) {
        if (control.cancelled)
            break;
        if (const Rejection error = runTool(tool, descriptor, control))
            return error;
    }
    return kAccepted;
}

} // namespace host
