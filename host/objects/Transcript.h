#pragma once

#include <QtCore/QElapsedTimer>
#include <QtCore/QJsonObject>
#include <QtCore/QString>
#include <QtCore/QVariantList>

#include <cstdio>
#include <mutex>

namespace host {

/// A file of events, one JSON object per line: `time` (UTC, ISO 8601 with milliseconds), `ms` (milliseconds
/// of a monotonic clock since open()), `thread` ("application", "scan", or "connection N", numbered by first
/// use), `kind`, and the fields of that kind. Each line is flushed at once, so that a killed process loses at
/// most the last line.
///
/// add() and hostCall(): any thread; open() must be called first. Without a file they have no effect.
class Transcript
{
public:
    Transcript() = default;
    ~Transcript();
    Transcript(const Transcript&) = delete;
    Transcript& operator=(const Transcript&) = delete;

    /// Creates or truncates the file. Returns the error; empty on success.
    QString open(const QString& path);
    bool isOpen() const { return file_ != nullptr; }

    void add(const QString& kind, QJsonObject fields);
    /// A call of a host object. Records are written by name, lists by their length.
    void hostCall(const char* object, const char* member, const QVariantList& arguments,
                  const QVariant& result = QVariant(), const QString& reason = QString());

private:
    mutable std::mutex mutex_;
    std::FILE* file_ = nullptr;
    QElapsedTimer clock_;
};

} // namespace host
