#pragma once

#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtDBus/QDBusConnection>

/// A disk service on a private system bus, and a scratch folder for images. One at a time.
class PrivateDiskService
{
public:
    PrivateDiskService();
    ~PrivateDiskService();

    /// Why the service does not run; empty if it runs.
    QString error() const { return error_; }
    QDBusConnection bus() const { return QDBusConnection(name_); }
    /// The address of the bus, for new connections.
    QString address() const { return address_; }
    /// Ends the processes of the service.
    void stop();

    /// @name Faults of one process: "udisksd" or "bus"
    /// @{
    void kill(const QString& name);
    void restart(const QString& name);
    /// @}

    /// From now on, the bus rejects calls of a method of the disk service; with empty arguments, of none.
    void refuse(const QString& interface, const QString& method);

    QString folder() const { return folder_.path(); }

    /// A new sparse file in the scratch folder.
    QString image(const QString& name, qint64 size) const;
    /// The loop device of an image, as the kernel reports it; empty if the image is not attached.
    static QString loopDeviceOf(const QString& image);

private:
    QTemporaryDir folder_;
    QProcess process_;
    QString name_;
    QString error_;
    QString address_;
};

/// The standard output of a program that must end with exit code 0; otherwise fails the test.
QString outputOf(const QString& program, const QStringList& arguments);
