#include "tools/ZorHandle.h"

#include "tools/HostPages.h"
#include "tools/Reply.h"
#include "tools/ToolBridge.h"

namespace {

const QString kDriveLetter = QStringLiteral("driveLetter");

} // namespace

CZorHandle::CZorHandle()
{
    lastCallEnd.start();
}

void CZorHandle::setBridge(const ToolBridge* toolBridge)
{
    bridge = toolBridge;
}

void CZorHandle::ResetParams()
{
    const std::lock_guard<std::mutex> lock(guard_);
    params = QVariantMap();
}

void CZorHandle::setParam(const QString& key, const QVariant& value)
{
    const std::lock_guard<std::mutex> lock(guard_);
    params[key] = value;
}

void CZorHandle::setParam(const QString& key, const std::string& value)
{
    setParam(key, QVariant(QString::fromStdString(value)));
}

QVariant CZorHandle::param(const QString& key) const
{
    const std::lock_guard<std::mutex> lock(guard_);
    return params.value(key);
}

QVariantMap CZorHandle::paramsCopy() const
{
    const std::lock_guard<std::mutex> lock(guard_);
    return params;
}

void CZorHandle::RunTask(std::string& answer, int functionIndex)
{
    answer = reply(false);
    if (bridge == nullptr || !bridge->pages.isFunValidForAI(functionIndex, paramsCopy()))
        return;
    answer = reply(true);
    // A new copy: an overlapping tool can have changed the parameters, and the order includes its entries.
    bridge->pages.doFunFromAI(functionIndex, paramsCopy());
}

void CZorHandle::RunDriveTask(std::string& answer, int functionIndex)
{
    answer = reply(false);
    if (bridge == nullptr || !isDriveLetterValid(param(kDriveLetter).toString()))
        return;
    RunTask(answer, functionIndex);
}

void CZorHandle::runDiskTask(std::string& answer, int functionIndex, int32_t diskIndex)
{
    ResetParams();
    setParam(QStringLiteral("diskIndex"), QVariant(diskIndex));
    RunTask(answer, functionIndex);
}

void CZorHandle::runLetterTask(std::string& answer, int functionIndex, const std::string& driveLetter)
{
    ResetParams();
    setParam(kDriveLetter, driveLetter);
    RunDriveTask(answer, functionIndex);
}

bool isDriveLetterValid(const QString& text)
{
    if (text.isEmpty())
        return false;
    const ushort first = text.at(0).unicode();
    return (first >= 'A' && first <= 'Z') || (first >= 'a' && first <= 'z');
}

QString normalisedLetter(const std::string& text)
{
    return QString::fromStdString(text).toUpper().left(1);
}
