#pragma once

#include "platform/Platform.h"

/// Answers from /sys and /proc where Linux knows a counterpart, and otherwise as a Windows machine does whose
/// call fails.
class PlatformLinux : public Platform
{
public:
    /// @p root stands before every path that is read; a test puts a folder of its own there.
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
    // The rows of a query with all the properties that are known of them.
    std::vector<QVariantMap> wholeRows(const QString& nameSpace, const QString& query) const;

    QString root_;
};
