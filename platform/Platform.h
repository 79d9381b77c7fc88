#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariantMap>

#include <memory>
#include <optional>
#include <vector>

/// The number of a Windows version, 6.2 and the like.
struct WindowsVersion
{
    int major = 0;
    int minor = 0;
};

/// A volume as the system counts it. The products of these are the caller's to form, in 64 bits.
struct VolumeGeometry
{
    quint64 sectorsPerCluster = 0;
    quint64 bytesPerSector = 0;
    quint64 clusters = 0; ///< of the whole volume, used and free
};

/// What the library asks of the operating system. Every member may be called from any thread and returns
/// nothing, or the empty value that is named, when the system has no answer; none throws.
class Platform
{
public:
    virtual ~Platform() = default;

    /// The system directory as the system spells it, in the system's 8-bit encoding; empty on failure.
    virtual QByteArray systemDirectory() const = 0;

    /// A plain string value below HKEY_LOCAL_MACHINE, without its one terminating zero; a zero before that
    /// one is part of the string. @p key with backslashes.
    virtual std::optional<QString> registryString(const QString& key, const QString& value) const = 0;

    virtual WindowsVersion windowsVersion() const = 0;

    /// How this machine was started: 1 BIOS, 2 UEFI. Only asked on Windows 6.2 or later.
    virtual std::optional<quint32> firmwareType() const = 0;

    /// The system's error number for reading a firmware variable that cannot exist; 1 where there is no UEFI.
    /// For versions that cannot tell the firmware type.
    virtual quint32 firmwareVariableError() const = 0;

    /// Memory built into the machine, in KiB.
    virtual std::optional<quint64> installedMemoryKib() const = 0;

    /// The volume that answers to @p root, such as "C:".
    virtual std::optional<VolumeGeometry> volumeGeometry(const QByteArray& root) const = 0;

    /// The rows of a WMI query in WQL, in their order, each with the named properties; a property that a row
    /// lacks is missing or invalid. Texts come as QString, numbers as int, truth values as bool. Empty on any
    /// failure.
    virtual std::vector<QVariantMap> wmiQuery(const QString& nameSpace, const QString& query,
                                              const QStringList& properties) const = 0;

    /// Runs a command line with no window of its own and waits for its end, at most 24.8 days. A command that
    /// cannot be started is over at once.
    virtual void runHidden(const QString& command) const = 0;

    /// The instance in force: the system's own, unless a test put another in its place.
    static const Platform& instance();

    /// Puts another instance in force for the life of this object. Not owned; one thread at a time.
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

/// The platform of the system that this is built for.
std::unique_ptr<Platform> makeSystemPlatform();

/// The system directory with ASCII letters in upper case; its first byte is the system drive's letter.
QByteArray upperSystemDirectory();

/// True if the system's environment names the processor "ARM64". Any thread.
bool isArm64Machine();
