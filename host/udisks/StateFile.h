#pragma once

#include "host/machine/Rejection.h"

#include <QtCore/QMap>
#include <QtCore/QString>

namespace host {

/// A JSON file with one object of strings, which several hosts can change at the same time. Application
/// thread.
class StateFile
{
public:
    /// @p name: of a file in the host's state folder, $XDG_STATE_HOME/zorhost or ~/.local/state/zorhost.
    explicit StateFile(const QString& name);

    QString path() const { return path_; }
    /// The strings of the file; empty if it is missing or damaged. @p problem: set if the file exists and
    /// cannot be read.
    QMap<QString, QString> read(Rejection& problem) const;
    /// Reads the file again, sets the strings of @p changes and removes those that are empty. Waits up to 2
    /// seconds for another host that writes. Empty on success.
    Rejection write(const QMap<QString, QString>& changes) const;

private:
    QString path_;
};

} // namespace host
