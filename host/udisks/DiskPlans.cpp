// The functions that act on a whole disk.
#include "host/machine/Layout.h"
#include "host/machine/OrderParts.h"
#include "host/udisks/PlanParts.h"

namespace host {

namespace {

const QString kGpt = QStringLiteral("gpt");
const QString kMbr = QStringLiteral("dos");

Steps toGpt(const Machine&, const QVariantMap&)
{
    return {writeTable(kGpt)};
}

Steps toMbr(const Machine&, const QVariantMap&)
{
    return {writeTable(kMbr)};
}

// An empty table has no partitions.
Steps deleteAll(const Machine& machine, const QVariantMap& params)
{
    return {writeTable(targetDisk(machine, params).isGPT ? kGpt : kMbr)};
}

Steps autoCreate(const Machine& machine, const QVariantMap& params)
{
    const bool gpt = textOf(params, "GptOrMbr").toUpper() == QLatin1String("GPT");
    const int count = numberOf(params, "partitionCount");
    const qint64 share = autoShare(targetDisk(machine, params), gpt, count);
    Steps steps{writeTable(gpt ? kGpt : kMbr)};
    for (int i = 0; i < count; ++i) {
        const qint64 begin = usableBegin() + i * share;
        steps.push_back(createIn({begin, begin + share}));
        steps.push_back(formatTarget(QStringLiteral("NTFS"), QString(), false));
    }
    return steps;
}

Steps erase(int passes)
{
    const QVariantMap options{{QStringLiteral("erase"), QStringLiteral("zero")}};
    return Steps(static_cast<std::size_t>(passes),
                 onDisk("Block", "Format", {QStringLiteral("empty"), options}));
}

Steps wipeDisk(const Machine&, const QVariantMap& params)
{
    return erase(numberOf(params, "eraseCount"));
}

Steps lowLevelFormat(const Machine&, const QVariantMap&)
{
    return erase(1);
}

// Powering off also writes the caches. Only a drive that cannot be switched off is ejected.
StepCall ejectCall(const OrderState& state)
{
    const DriveInfo* drive = state.snapshot.drive(state.disk.drive);
    if (drive == nullptr || !(drive->canPowerOff || drive->isEjectable))
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The disk can be neither powered off nor ejected."));
    return DiskServiceCall{drive->path,
                           QStringLiteral("Drive"),
                           drive->canPowerOff ? QStringLiteral("PowerOff") : QStringLiteral("Eject"),
                           {QVariantMap()}};
}

Steps eject(const Machine&, const QVariantMap&)
{
    OrderStep step;
    step.call = ejectCall;
    return {step};
}

// The editor is a page of the window, and the order changes nothing.
Steps show(const Machine&, const QVariantMap&)
{
    return {};
}

} // namespace

const Planners& diskPlanners()
{
    static const Planners table = {
        {Function::OpenDiskLayoutEditor, show},       {Function::InitializeDiskToGpt, toGpt},
        {Function::InitializeDiskToMbr, toMbr},       {Function::ConvertDiskToGpt, toGpt},
        {Function::ConvertDiskToMbr, toMbr},          {Function::DeleteAllPartitions, deleteAll},
        {Function::AutoCreatePartitions, autoCreate}, {Function::WipeDisk, wipeDisk},
        {Function::LowLevelFormat, lowLevelFormat},   {Function::EjectUsb, eject},
    };
    return table;
}

} // namespace host
