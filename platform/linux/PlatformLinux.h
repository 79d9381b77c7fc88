#pragma once

#include "platform/Platform.h"

/// Answers from /sys and /proc where Linux has a counterpart, and otherwise as Windows does if the call
/// fails.
class PlatformLinux : public Platform
{
public:
    /// @p root is a prefix of every path that is read; tests pass a folder of their own.
    explicit PlatformLinux(QString root = QString());

    QByteArray systemDirectory() const override;
    std::optional<QString> registryString(const QString& key, const QString& value) const override;
    WindowsVersion windowsVersion() const override;
    std::optional<quint32> firmwareType() const override;
    quint32 firmwareVariableError() const override;
    std::optional<quint64> installedMemoryKib() const override;
    std::optional<VolumeGeometry> volumeGeometry(const QByteArray& root) const override;
    std::vector<QVariantMap> wmiQuery(const QString& nameSpace, const QString& query,
                                      const QStringList& properties) const override;
    void runHidden(const QString& command) const override;

private:
    // The rows of a query with all known properties.
    std::vector<QVariantMap> queryAllProperties(const QString& nameSpace, const QString& query) const;

    QString root_;
};
