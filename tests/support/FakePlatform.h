#pragma once

#include "platform/Platform.h"

#include <functional>
#include <map>
#include <utility>

/// A platform whose answers are fields; an empty field answers as a failing call does.
class FakePlatform : public Platform
{
public:
    QByteArray directory = "C:\\Windows\\system32";
    std::map<std::pair<QString, QString>, QString> registry;
    WindowsVersion version{10, 0};
    std::optional<quint32> firmware;
    quint32 variableError = 1;
    std::optional<quint64> memoryKib;
    /// By root, such as "C:".
    std::map<QByteArray, VolumeGeometry> volumes;
    /// Rows by namespace and text of the query. A query returns the named properties of them and no others,
    /// so that a misspelt name finds nothing, as in the real system.
    std::map<std::pair<QString, QString>, std::vector<QVariantMap>> rows;
    /// What a hidden command does; null means that it cannot be started.
    std::function<void(const QString& command)> hidden;
    /// The names of the questions, in order; one thread at a time.
    mutable QStringList asked;

    QByteArray systemDirectory() const override { return directory; }
    std::optional<QString> registryString(const QString& key, const QString& value) const override
    {
        const auto found = registry.find({key, value});
        return found == registry.end() ? std::nullopt : std::optional<QString>(found->second);
    }
    WindowsVersion windowsVersion() const override
    {
        asked << QStringLiteral("version");
        return version;
    }
    std::optional<quint32> firmwareType() const override
    {
        asked << QStringLiteral("firmware");
        return firmware;
    }
    quint32 firmwareVariableError() const override
    {
        asked << QStringLiteral("firmwareVariable");
        return variableError;
    }
    std::optional<quint64> installedMemoryKib() const override
    {
        asked << QStringLiteral("memory");
        return memoryKib;
    }
    std::optional<VolumeGeometry> volumeGeometry(const QByteArray& root) const override
    {
        asked << QStringLiteral("volume ") + QString::fromLatin1(root);
        const auto found = volumes.find(root);
        return found == volumes.end() ? std::nullopt : std::optional<VolumeGeometry>(found->second);
    }
    std::vector<QVariantMap> wmiQuery(const QString& nameSpace, const QString& query,
                                      const QStringList& properties) const override
    {
        asked << query;
        const auto found = rows.find({nameSpace, query});
        std::vector<QVariantMap> result;
        if (found == rows.end())
            return result;
        for (const QVariantMap& row : found->second) {
            result.emplace_back();
            for (const QString& name : properties) {
                if (row.contains(name))
                    result.back().insert(name, row.value(name));
            }
        }
        return result;
    }
    void runHidden(const QString& command) const override
    {
        asked << command;
        if (hidden)
            hidden(command);
    }
};
