#pragma once

#include "platform/Platform.h"

#include <map>
#include <utility>

/// A platform whose answers are fields; an empty field answers as a failing call does.
class FakePlatform : public Platform
{
public:
    QByteArray directory = "C:\\Windows\\system32";
    std::map<std::pair<QString, QString>, QString> registry;

    QByteArray systemDirectory() const override { return directory; }
    std::optional<QString> registryString(const QString& key, const QString& value) const override
    {
        const auto found = registry.find({key, value});
        return found == registry.end() ? std::nullopt : std::optional<QString>(found->second);
    }
};
