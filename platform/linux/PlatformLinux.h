#pragma once

#include "platform/Platform.h"

/// Answers as a Windows machine does whose registry lacks what is asked.
class PlatformLinux : public Platform
{
public:
    QByteArray systemDirectory() const override;
    std::optional<QString> registryString(const QString& key, const QString& value) const override;
};
