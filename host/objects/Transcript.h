#pragma once

#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QJsonObject>
#include <QtCore/QString>
#include <QtCore/QVariantList>

#include <atomic>
#include <functional>
#include <mutex>

namespace host {

/// A file of events, one JSON object per line: `time` (UTC, ISO 8601 with milliseconds), `ms` (milliseconds
/// of a monotonic clock since open()), `thread` ("application", "scan", or "connection N", numbered by first
/// use), `kind`, and the fields of that kind. Each line is flushed at once, so that a killed process loses at
/// most the last line.
///
/// After a failed write, for example on a full disk, the file ends with the last complete line and gets no
/// further lines, even if space becomes free: a gap would not be visible.
///
/// add() and hostCall(): any thread; open() must be called first. Without a file they have no effect.
class Transcript
{
public:
    /// Creates or truncates the file. A pipe or a character device is written to; a folder or a disk is an
    /// error. Returns the error; empty on success.
    /// @p onFailure: called once, with the reason, on the thread whose write fails.
    QString open(const QString& path, std::function<void(const QString&)> onFailure = {});
    bool isOpen() const { return isOpen_; }
    bool hasFailed() const { return hasFailed_; }

    void add(const QString& kind, QJsonObject fields);
    /// A call of a host object. Records are written by name, lists by their length.
    void hostCall(const char* object, const char* member, const QVariantList& arguments,
                  const QVariant& result = QVariant(), const QString& reason = QString());

private:
    QString write(const QByteArray& line);

    std::mutex mutex_;
    std::atomic<bool> isOpen_{false};
    std::atomic<bool> hasFailed_{false};
    QFile file_;
    qint64 complete_ = 0; ///< bytes of complete lines
    QElapsedTimer clock_;
    std::function<void(const QString&)> onFailure_;
};

} // namespace host
