#pragma once

#include <QtCore/QString>

namespace host {

/// The name of a tool and its arguments.
struct AnnouncedCall
{
    QString tool; ///< empty if the text does not start with a name
    QString arguments;
};

/// Splits an agent's announcement. The agent chooses the form: "Tool key=value", "Tool {JSON}", or a JSON
/// object with the tool's name and arguments.
AnnouncedCall splitCall(const QString& toolCalls);

/// Arguments for a person: `key=value key=value` with sizes in units ("size=300 MB") and without JSON. Text
/// of another form is returned unchanged.
QString readableArguments(const QString& arguments);

/// Whether the arguments name the drive: an argument such as driveLetter or sourceDriveLetter has this
/// letter as its value.
bool namesDrive(const QString& arguments, const QString& letter);

} // namespace host
