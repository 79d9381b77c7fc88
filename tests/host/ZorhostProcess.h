#pragma once

#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>

#include <functional>

/// The program as a child process, in a scratch folder of its own: a copy of the program, its libraries and
/// its machines, a `netstat` first in its path that leads the port search to a free port, and no display.
class ZorhostProcess
{
public:
    ZorhostProcess();
    ~ZorhostProcess();

    /// A file in the program's folder.
    QString file(const QString& name) const { return folder_.filePath(name); }
    void write(const QString& name, const QByteArray& content) const;
    void remove(const QString& name) const;

    /// Makes `netstat` say that every port below this one is taken.
    void setFirstPort(int port);
    int firstPort() const { return port_; }
    QProcessEnvironment& environment() { return environment_; }

    void start(const QStringList& arguments);
    /// Starts, and waits for the ready line; another port is tried if this one was taken meanwhile.
    bool startReady(const QStringList& arguments);
    /// Waits until standard output holds the text.
    bool waitForOutput(const QByteArray& text);
    /// Waits until there is a file of that name in the program's folder.
    bool waitForFile(const QString& name);
    /// Waits until that file in the program's folder holds the text.
    bool waitForContent(const QString& name, const QByteArray& text);
    /// Waits for the end; -1 if it does not come, or came by a signal.
    int exitCode();
    void signal(int number) const;
    bool isRunning() const { return process_.state() != QProcess::NotRunning; }
    QByteArray output();
    QByteArray errors();

private:
    bool waitUntil(const std::function<bool()>& condition);
    void collect();

    QTemporaryDir folder_;
    QProcess process_;
    QProcessEnvironment environment_;
    QByteArray output_;
    QByteArray errors_;
    int port_ = 0;
};

/// A port of the loopback that nobody listens on now.
int freePort();
