#pragma once

#include <QtCore/QElapsedTimer>
#include <QtCore/QJsonObject>
#include <QtCore/QString>
#include <QtCore/QVariantList>

#include <cstdio>
#include <mutex>

namespace host {

/// What happened, a JSON object on a line of a file each: `time` (UTC, ISO 8601 with milliseconds), `ms`
/// (milliseconds of a clock that never jumps, from the opening on), `thread` ("application", "scan", or
/// "connection N", counted in the order in which they first did something here), `kind`, and what belongs to
/// that kind. Each line is handed to the system at once, so that a killed process leaves all but at most the
/// last.
///
/// add() and hostCall() may be called from any thread; open() belongs before all others. Without a file all
/// do nothing.
class Transcript
{
public:
    Transcript() = default;
    ~Transcript();
    Transcript(const Transcript&) = delete;
    Transcript& operator=(const Transcript&) = delete;

    /// Begins a file in place of what stood there; the error, empty if it could be opened.
    QString open(const QString& path);
    bool isOpen() const { return file_ != nullptr; }

    void add(const QString& kind, QJsonObject fields);
    /// A call on one of the host's objects. Records stand in it by name; a list in the result by its length.
    void hostCall(const char* object, const char* member, const QVariantList& arguments,
                  const QVariant& result = QVariant(), const QString& reason = QString());

private:
    mutable std::mutex mutex_;
    std::FILE* file_ = nullptr;
    QElapsedTimer clock_;
};

} // namespace host
