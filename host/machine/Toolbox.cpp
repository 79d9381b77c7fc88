#include "host/machine/Toolbox.h"

#include "host/machine/Records.h"

#include <QtCore/QMap>

namespace host {

QString toolboxName(int index)
{
    static const QMap<ToolboxFunction, QString> names = {
        {ToolboxFunction::PasswordReset, QStringLiteral("passwordReset")},
        {ToolboxFunction::BootRepair, QStringLiteral("bootRepair")},
        {ToolboxFunction::WriteProtection, QStringLiteral("writeProtection")},
        {ToolboxFunction::RebuildMbr, QStringLiteral("rebuildMbr")},
        {ToolboxFunction::Align4k, QStringLiteral("align4k")},
        {ToolboxFunction::Windows11Check, QStringLiteral("windows11Check")},
        {ToolboxFunction::BadSectors, QStringLiteral("badSectors")},
        {ToolboxFunction::BitLockerKey, QStringLiteral("bitLockerKey")},
        {ToolboxFunction::CheckFileSystem, QStringLiteral("checkFileSystem")}};
    return names.value(static_cast<ToolboxFunction>(index));
}

Rejection toolboxRejection(const Machine& machine, int index, const QVariantMap& record)
{
    const QString name = toolboxName(index);
    const auto function = static_cast<ToolboxFunction>(index);
    if (name.isEmpty())
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The function does not exist."));
    if (!machine.toolbox.value(name, true))
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The function is switched off."));
    if (record.isEmpty())
        return kAccepted;
    const Disk* disk = machine.disk(diskIndexOf(record));
    if (disk == nullptr)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The target does not exist."));
    if (function == ToolboxFunction::RebuildMbr && disk->isGPT)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "A GPT disk has no MBR to rebuild."));
    if (function == ToolboxFunction::Align4k && isAlignedTo4k(record))
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The disk is already aligned."));
    if (function == ToolboxFunction::BitLockerKey && record.value(QStringLiteral("bltState")).toInt() == 0)
        return Text(QT_TRANSLATE_NOOP("Sandbox", "The drive is not encrypted."));
    return kAccepted;
}

std::optional<GuidedWork> toolboxWork(int index, const QVariantMap& record)
{
    static const QMap<ToolboxFunction, Function> functions = {
        {ToolboxFunction::WriteProtection, Function::ToggleWriteProtection},
        {ToolboxFunction::RebuildMbr, Function::RebuildMbr},
        {ToolboxFunction::Align4k, Function::AlignDiskTo4k},
        {ToolboxFunction::BadSectors, Function::ScanBadSectors},
        {ToolboxFunction::CheckFileSystem, Function::CheckFileSystem}};
    const auto function = functions.find(static_cast<ToolboxFunction>(index));
    if (function == functions.end() || diskIndexOf(record) < 0)
        return std::nullopt;
    const bool isDisk = isDiskRecord(record);
    const QString key = isDisk ? QStringLiteral("diskIndex") : QStringLiteral("driveLetter");
    return GuidedWork{*function, {{key, record.value(key)}}};
}

} // namespace host
