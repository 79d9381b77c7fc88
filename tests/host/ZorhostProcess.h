#pragma once

#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>

#include <functional>

/// The program as a child process in its own scratch folder: a copy of the program, its libraries and its
/// machines, a fake `netstat` that leads the port search to a free port, no display and no settings.
class ZorhostProcess
{
public:
    ZorhostProcess();
    ~ZorhostProcess();

    /// A file in the program's folder.
    QString file(const QString& name) const { return folder_.filePath(name); }
    void write(const QString& name, const QByteArray& content) const;
    void remove(const QString& name) const;

    /// Makes `netstat` report every lower port as used.
    void setFirstPort(int port);
    int firstPort() const { return port_; }
    QProcessEnvironment& environment() { return environment_; }

    void start(const QStringList& arguments);
    /// Starts and waits for the ready line; retries with another port if the port is in use.
    bool startReady(const QStringList& arguments);
    /// Writes to standard input and closes it.
    void send(const QByteArray& text);
    /// Waits until standard output contains the text.
    bool waitForOutput(const QByteArray& text);
    /// Waits until a file of that name exists in the program's folder.
    bool waitForFile(const QString& name);
    /// Waits until that file in the program's folder contains the text.
    bool waitForContent(const QString& name, const QByteArray& text);
    /// Waits for the end; -1 on a timeout or after a signal.
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

/// An unused port of the loopback interface.
int freePort();
