#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QTemporaryDir>

/// A fake `netstat`, first in the path during the lifetime of this object. One at a time.
class FakeNetstat
{
public:
    /// @p body is a shell script that runs in folder(). The rest of the path is unchanged.
    explicit FakeNetstat(const QByteArray& body);
    ~FakeNetstat();
    FakeNetstat(const FakeNetstat&) = delete;
    FakeNetstat& operator=(const FakeNetstat&) = delete;

    /// The folder of the script and of its output files.
    QString folder() const { return folder_.path(); }
    QByteArray readFile(const QString& name) const;

    /// A script that prints @p text.
    static QByteArray printing(const QByteArray& text);

private:
    QTemporaryDir folder_;
    QByteArray previousPath_;
    QString previousCurrent_;
};

/// A netstat that prints its listing only once finish() is called, so that a test can act during the port
/// search.
class HeldNetstat
{
public:
    explicit HeldNetstat(const QByteArray& listing);
    /// Lets a netstat that still waits end.
    ~HeldNetstat();

    /// True once netstat has been started and waits.
    bool isWaiting() const;
    void finish() const;

private:
    FakeNetstat netstat_;
};

/// A folder without any program as the whole path, for the life of this object.
class EmptyPath
{
public:
    EmptyPath();
    ~EmptyPath();

private:
    QTemporaryDir folder_;
    QByteArray previousPath_;
};
