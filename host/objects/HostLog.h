#pragma once

#include <QtCore/QStringListModel>

namespace host {

/// The host's log: each line goes to standard output with its time and to the window's model. Application
/// thread.
class HostLog : public QStringListModel
{
    Q_OBJECT

public:
    using QStringListModel::QStringListModel;

    /// Writes a line that starts with the local time, hh:mm:ss.zzz.
    void write(const QString& line);

    /// Writes a line without a time to standard output only, and flushes it.
    static void print(const QString& line);
};

} // namespace host
