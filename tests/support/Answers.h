#pragma once

#include "ZORNativePlugin_constants.h"

#include <QtCore/QString>

#include <ostream>
#include <string>

/// A string constant of the interface file. It converts to, and compares with, the strings of Qt and of the
/// standard library. Unlike the generated constants it can be used during static initialization.
class InterfaceString
{
public:
    explicit InterfaceString(std::string ZORNativePluginConstants::*member)
        : value_(ZORNativePluginConstants().*member)
    {
    }
    const std::string& bytes() const { return value_; }
    QString text() const { return QString::fromStdString(value_); }
    operator std::string() const { return value_; }
    operator QString() const { return text(); }

private:
    std::string value_;
};

inline bool operator==(const std::string& left, const InterfaceString& right)
{
    return left == right.bytes();
}

inline bool operator==(const QString& left, const InterfaceString& right)
{
    return left == right.text();
}

inline std::ostream& operator<<(std::ostream& out, const InterfaceString& string)
{
    return out << '"' << string.bytes() << '"';
}

/// The answers of the tools, and the reasons of the gate.
namespace answers {

inline const InterfaceString queued(&ZORNativePluginConstants::TASK_QUEUED);
inline const InterfaceString notValid(&ZORNativePluginConstants::TASK_NOT_VALID);
inline const InterfaceString inProgress(&ZORNativePluginConstants::OPERATION_IN_PROGRESS);
inline const InterfaceString inExecution(&ZORNativePluginConstants::TASKS_IN_EXECUTION);

} // namespace answers
