#pragma once

#include <QtCore/QVariantMap>

class CComponentBase;
class Inventory;
class QObject;
class QQmlApplicationEngine;

/// The host's pages, as the tools and the scan call them.
///
/// Every member can be called on any thread. Off the application thread, a call waits until that thread has
/// run the host's method. A missing page or method counts as a rejection unless the member documents
/// otherwise.
class HostPages
{
public:
    /// Neither argument is owned. Each call gets the engine from @p component.
    HostPages(const CComponentBase& component, const Inventory& inventory);

    /// Null before CComponentBase::setEngine.
    QQmlApplicationEngine* engine() const;
    /// The host's main object, which provides the stand-alone functions; null if missing.
    QObject* mainObject() const;

    /// @name The partition page
    /// @{
    /// Closes an open guide and calls a function. See FunctionIndex.h for @p functionIndex.
    void doFunFromAI(int functionIndex, const QVariantMap& params) const;
    /// True if the page accepts the function with these parameters.
    bool isFunValidForAI(int functionIndex, QVariantMap params) const;
    /// @}

    /// Closes an open guide and starts the recovery of lost partitions (@p isPartRecov) or the repair of a
    /// partition.
    bool doPrFunForAI(bool isPartRecov, QVariantMap info) const;
    /// Closes an open guide and opens the disk health function. On an agent's call, returns false if the
    /// inventory contains no partition of the disk.
    bool openDiskHealth(int diskIndex) const;

    /// @name Boot media
    /// @{
    /// True if a boot media task can run.
    bool isBmFunValid(const QVariantMap& info) const;
    /// Closes an open guide and runs a boot media task. Returns the result of isBmFunValid; a host without
    /// the method ignores the task, which does not count as a rejection.
    bool doBmFunForAI(const QVariantMap& info) const;
    /// True if the pre-OS environment is enabled.
    bool isAlreadyPreOS() const;
    /// @}

private:
    const CComponentBase& component_;
    const Inventory& inventory_;
};

/// Closes any open guide of the host. Any thread; waits for the application thread.
void closeGuide();
