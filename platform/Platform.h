#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariantMap>

#include <memory>
#include <optional>
#include <vector>

/// A Windows version number, such as 6.2.
struct WindowsVersion
{
    int major = 0;
    int minor = 0;
};

/// Geometry of a volume. Callers must multiply the values in 64 bits.
struct VolumeGeometry
{
    quint64 sectorsPerCluster = 0;
    quint64 bytesPerSector = 0;
    quint64 clusters = 0; ///< of the whole volume, used and free
};

/// Access to the operating system. Every member can be called on any thread. A failure gives an empty
/// optional, or the value that the member documents. No member throws.
class Platform
{
public:
    virtual ~Platform() = default;

    /// The system directory as the system spells it, in the system's 8-bit encoding; empty on failure.
    virtual QByteArray systemDirectory() const = 0;

    /// A string value below HKEY_LOCAL_MACHINE, without its terminating zero. Only one zero is removed: an
    /// earlier zero is part of the string. @p key uses backslashes.
    virtual std::optional<QString> registryString(const QString& key, const QString& value) const = 0;

    virtual WindowsVersion windowsVersion() const = 0;

    /// The firmware that started this machine: 1 BIOS, 2 UEFI. Requires Windows 6.2 or later.
    virtual std::optional<quint32> firmwareType() const = 0;

    /// The system's error number for reading a firmware variable that does not exist; 1 without UEFI. For
    /// systems that cannot report the firmware type.
    virtual quint32 firmwareVariableError() const = 0;

    /// Installed memory in KiB.
    virtual std::optional<quint64> installedMemoryKib() const = 0;

    /// The geometry of the volume at @p root, such as "C:".
    virtual std::optional<VolumeGeometry> volumeGeometry(const QByteArray& root) const = 0;

    /// The rows of a WMI query in WQL, in order, each with the named properties. A property that a row lacks
    /// is missing or invalid. Strings are QString, numbers int, truth values bool. Empty on any failure.
    virtual std::vector<QVariantMap> wmiQuery(const QString& nameSpace, const QString& query,
                                              const QStringList& properties) const = 0;

    /// Runs a command line without a window and waits until it ends, at most 24.8 days. Returns at once if
    /// the command cannot be started.
    virtual void runHidden(const QString& command) const = 0;

    /// The current instance: the system's own, unless a test has replaced it.
    static const Platform& instance();

    /// Replaces the instance for the lifetime of this object. The replacement is not owned. One thread at a
    /// time.
    class Scope
    {
    public:
        explicit Scope(const Platform& platform);
        ~Scope();
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;

    private:
        const Platform* previous_;
    };
};

/// Creates the platform of the system that the library is built for.
std::unique_ptr<Platform> makeSystemPlatform();

/// The system directory with ASCII letters in upper case; its first byte is the letter of the system drive.
QByteArray upperSystemDirectory();

/// True if the variable PROCESSOR_ARCHITECTURE of the system environment is "ARM64". Any thread.
bool isArm64Machine();
