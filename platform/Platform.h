#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <memory>
#include <optional>

/// What the library asks of the operating system. Every member may be called from any thread and returns
/// nothing, or the empty value that is named, when the system has no answer; none throws.
class Platform
{
public:
    virtual ~Platform() = default;

    /// The system directory as the system spells it, in the system's 8-bit encoding; empty on failure.
    virtual QByteArray systemDirectory() const = 0;

    /// A plain text value below HKEY_LOCAL_MACHINE; @p key with backslashes.
    virtual std::optional<QString> registryString(const QString& key, const QString& value) const = 0;

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
