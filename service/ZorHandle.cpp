#include "service/ZorHandle.h"

#include "plugin/AIBridge.h"

const std::string kTaskQueued = "Task Queued";
const std::string kTaskNotValid = "Task NotValid";

namespace {

const QString kDriveLetter = QStringLiteral("driveLetter");

} // namespace

CZorHandle::CZorHandle()
{
    lastCallEnd.start();
}

void CZorHandle::setBridge(AIBridge* theBridge)
{
    bridge = theBridge;
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

QVariantMap CZorHandle::paramsCopy() const
{
    const std::lock_guard<std::mutex> lock(guard_);
    return params;
}

void CZorHandle::RunTask(std::string& answer, int functionIndex)
{
    answer = kTaskNotValid;
    if (bridge == nullptr || !bridge->isFunValidForAI(functionIndex, paramsCopy()))
        return;
    answer = kTaskQueued;
    bridge->doFunFromAI(functionIndex, paramsCopy());
}

void CZorHandle::RunDriveTask(std::string& answer, int functionIndex)
{
    answer = kTaskNotValid;
    if (bridge == nullptr || !isDriveLetterValid(paramsCopy().value(kDriveLetter).toString().toStdString()))
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

bool isDriveLetterValid(const std::string& text)
{
    if (text.empty())
        return false;
    const char first = text.front();
    return (first >= 'A' && first <= 'Z') || (first >= 'a' && first <= 'z');
}

QString normalisedLetter(const std::string& text)
{
    return QString::fromStdString(text).toUpper().left(1);
}
