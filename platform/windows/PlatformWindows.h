#pragma once

#include "platform/Platform.h"

class PlatformWindows : public Platform
{
public:
    QByteArray systemDirectory() const override;
    std::optional<QString> registryString(const QString& key, const QString& value) const override;
};
