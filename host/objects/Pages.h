#pragma once

#include "host/objects/HostCore.h"

#include <QtCore/QVariantList>

#include <atomic>

class QQmlContext;

namespace host {

/// The context property `partitionmanager`: the partition page.
class PartitionManager : public QObject
{
    Q_OBJECT

public:
    explicit PartitionManager(HostCore& core, QObject* parent = nullptr);

    /// With `TestFunValid` true, a question: returns whether the page accepts the order. Otherwise an order,
    /// which is carried out after the return; returns true.
    Q_INVOKABLE bool doFunFromAI(int functionIndex, QVariantMap params);
    Q_INVOKABLE bool isWin11CheckerEnable();
    /// Any thread.
    Q_INVOKABLE bool hasDiskSmartInfoError(int diskIndex) const;

private:
    HostCore& core_;
};

/// The context property `toolbox`. Any thread.
class Toolbox : public QObject
{
    Q_OBJECT

public:
    explicit Toolbox(HostCore& core, QObject* parent = nullptr);

    Q_INVOKABLE bool check4kAlign(QVariant disk) const;

private:
    HostCore& core_;
};

/// The context property `partitionrecovery`.
class PartitionRecovery : public QObject
{
    Q_OBJECT

public:
    explicit PartitionRecovery(HostCore& core, QObject* parent = nullptr);

    /// Whether the task's disk is readable.
    Q_INVOKABLE bool isDiskIndexValid(QVariant task);
    /// Any thread.
    Q_INVOKABLE bool isRawPart(QVariant partition) const;

private:
    HostCore& core_;
};

/// The context property `bootablemedia`.
class BootableMedia : public QObject
{
    Q_OBJECT

public:
    explicit BootableMedia(HostCore& core, QObject* parent = nullptr);

    /// Whether the pre-OS environment is installed.
    Q_INVOKABLE bool isAlreadyEnable();

private:
    HostCore& core_;
};

/// The context property `deviceMgr`. Any thread.
class DeviceManager : public QObject
{
    Q_OBJECT

public:
    explicit DeviceManager(HostCore& core, QObject* parent = nullptr);

    /// All disks; the selector is ignored.
    Q_INVOKABLE QVariantList disks(int selector, bool flag) const;
    /// The disks with a boot partition; the selector is ignored.
    Q_INVOKABLE QVariantList bootDisks(int selector, bool flag) const;

private:
    HostCore& core_;
};

/// The context property `clone`: the clone page.
class ClonePage : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int cloneType READ cloneType WRITE setCloneType)

public:
    explicit ClonePage(HostCore& core, QObject* parent = nullptr);

    /// Any thread.
    int cloneType() const { return cloneType_; }
    void setCloneType(int type);

    /// The reason why the guide rejects the task at that step; empty if accepted.
    Q_INVOKABLE QString invalidInfo(QVariantMap source, QVariantMap destination, int step,
                                    QVariantMap defBoot);

private:
    HostCore& core_;
    std::atomic<int> cloneType_{-1};
};

/// The context property `diskconverter`.
class DiskConverter : public QObject
{
    Q_OBJECT

public:
    explicit DiskConverter(HostCore& core, QObject* parent = nullptr);

    Q_INVOKABLE bool isFunValid(int conversion, QVariantMap record);
    Q_INVOKABLE QString isGPT2MBRValid(QVariantMap record);
    Q_INVOKABLE QString isMBR2GPTValid(QVariantMap record);

private:
    HostCore& core_;
};

/// Creates all pages as children of @p core and publishes them under their names.
void publishPages(HostCore& core, QQmlContext& context);

} // namespace host
