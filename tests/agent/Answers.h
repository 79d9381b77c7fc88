#pragma once

#include "ZORNativePlugin_constants.h"

#include <QtCore/QByteArray>

/// The answers and sentences of the interface file as zorcall prints them: JSON without a line feed.
namespace answers {

inline QByteArray json(const std::string& string)
{
    return '"' + QByteArray::fromStdString(string) + '"';
}

inline QByteArray queued()
{
    return json(g_ZORNativePlugin_constants.TASK_QUEUED);
}

inline QByteArray notValid()
{
    return json(g_ZORNativePlugin_constants.TASK_NOT_VALID);
}

inline QByteArray allowed()
{
    return R"({"allow": true, "reasons": ""})";
}

inline QByteArray rejected(const std::string& reasons)
{
    return R"({"allow": false, "reasons": )" + json(reasons) + '}';
}

inline QByteArray operationInProgress()
{
    return rejected(g_ZORNativePlugin_constants.OPERATION_IN_PROGRESS);
}

inline QByteArray tasksInExecution()
{
    return rejected(g_ZORNativePlugin_constants.TASKS_IN_EXECUTION);
}

} // namespace answers
