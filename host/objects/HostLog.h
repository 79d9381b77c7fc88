#pragma once

#include <QtCore/QStringListModel>

namespace host {

/// The host's log: each line goes to standard output with its time and into the model that the window shows.
/// Application thread.
class HostLog : public QStringListModel
{
    Q_OBJECT

public:
    using QStringListModel::QStringListModel;

    /// Writes a line that begins with the local time, hh:mm:ss.zzz.
    void write(const QString& line);

    /// Writes a line to standard output alone, as it stands, and at once.
    static void print(const QString& line);
};

} // namespace host
