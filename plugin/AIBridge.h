#pragma once

#include "plugin/ComponentBase.h"
#include "service/WireTypes.h"

#include <QtCore/QReadWriteLock>
#include <QtCore/QVariantList>
#include <QtCore/QVariantMap>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

// AIBRIDGE_BUILD: the library's own sources. AIBRIDGE_STATIC: what links those sources statically, as tests do.
#if defined(AIBRIDGE_BUILD)
#define AIBRIDGE_EXPORT Q_DECL_EXPORT
#elif defined(AIBRIDGE_STATIC)
#define AIBRIDGE_EXPORT
#else
#define AIBRIDGE_EXPORT Q_DECL_IMPORT
#endif

class AIFuncallThread;
class RecScanThread;

/// The component: the one object that the library gives its host.
///
/// Calling order: getInstance, setEngine, init; then setDiskInfo before an agent can see anything. The object
/// has no parent; the host deletes it after Release.
///
/// Threads: the invokables, setEngine, init and Release belong to the application thread. Every other member
/// may be called from any thread; those that reach the host block until the application thread has run the
/// host's method, so that thread must keep its event loop running.
class AIBRIDGE_EXPORT AIBridge : public CComponentBase
{
    Q_OBJECT

public:
    AIBridge();
    /// Stops nothing by itself: Release comes first.
    ~AIBridge() override;

    QString name() const override;
    /// Starts the agent service. The port search of its thread can take up to 30 seconds.
    ///
    /// Has no effect while a service runs (see isServerRunning). After Release, or after a service that has
    /// ended by itself because its address could not be bound, init starts a new service and deletes the
    /// thread object of the previous one. Each round behaves as the first: Release must wait until the new
    /// service serves. Until its port search is over, AGENT_NATIVE_PORT and AGENT_CHAT_PORT hold the ports of
    /// the previous round.
    void init() override;
    /// False: the component has no page of its own in the host's layout.
    bool canLayout() const override;
    void setEngine(QQmlApplicationEngine* engine) override;

Q_SIGNALS:
    /// A recommendation of the scan, a QVariantMap inside. Application thread.
    void sigRecScanResult(QVariant v);
    /// Opens the clone guide, a QVariantMap inside. Emitted on the caller's thread.
    void sigCloneResult(QVariant v);
    /// Opens the conversion guide, a QVariantMap inside. Emitted on the caller's thread.
    void sigConvertResult(QVariant v);
    /// The agent is about to call a tool. Emitted on a connection thread.
    void sigAbout2CallFun(QString toolCalls);
    /// The agent has called a tool; @p b is true when it was queued. Emitted on a connection thread.
    void sigAfterCallFun(QString result, bool b);
    /// Never emitted here; there for the host to connect to.
    void sigClearRecScan();

public:
    /// Replaces the inventory by @p info, a list of disk maps.
    Q_INVOKABLE void setDiskInfo(QVariantList info);
    /// True from init until the service's thread has ended.
    Q_INVOKABLE bool isServerRunning();
    /// Starts a recommendation scan; while one runs there is no effect. The inventory is copied at the first
    /// call.
    Q_INVOKABLE void beginRecScan();
    /// Does nothing, on purpose: only Release stops a scan.
    Q_INVOKABLE void stopRecScan();
    /// The user's answer to a recommendation. Returns at once; the action runs 100 milliseconds later.
    Q_INVOKABLE void doRecOperation(QVariant info);

    /// @name Orders to the host's pages
    /// @{
    /// Orders a function of the partition page, after closing any guide.
    void doFunFromAI(int functionIndex, QVariantMap params);
    /// Asks the partition page whether it would take the function with these parameters.
    bool isFunValidForAI(int functionIndex, QVariantMap params);
    /// Starts partition recovery; false if the host refuses or cannot.
    bool doPrFunForAI(bool isPartRecov, QVariantMap info);
    /// Opens the disk health function; false if the inventory lacks the disk or the host cannot.
    bool openDiskHealth(int diskIndex);
    /// Asks whether a boot media task may run.
    bool isBmFunValid(QVariantMap info);
    /// Runs a boot media task; the answer is that of isBmFunValid.
    bool doBmFunForAI(QVariantMap info);
    /// True if the pre-OS environment is enabled.
    bool isAlreadyPreOS();
    /// @}

    /// @name Inventory
    /// Sizes are bytes. A reader sees the inventory before a refill or after it, never half of it.
    /// @{
    void getDiskInfo(std::vector<DiskInfo>& out);
    /// Leaves @p out as it was if no partition of that disk is known.
    void getPartitionInfo(std::vector<PartitionInfo>& out, int diskIndex);
    void getAllPartitionInfo(std::vector<PartitionInfo>& out);
    /// Looks at the first byte of @p driveLetter; leaves @p out as it was for an empty or unknown letter.
    void getPartitionInfo(PartitionInfo& out, const std::string& driveLetter);
    /// Adds one disk's partitions to the inventory.
    void parsePartitionInfo(const QVariantList& partitions);
    /// Place of the first region of at least @p size bytes among the disk's unallocated regions; 0 if none
    /// fits.
    int findOneUnallocatedPartition(int diskIndex, std::int64_t size);
    /// Capacity of the partition in bytes, 0 for an unknown letter.
    std::int64_t getPartitionSize(const std::string& driveLetter);
    /// @}

protected:
    /// Stops the service and the scan and waits for both without limit. Must not be called before the service
    /// has begun to serve, nor while a tool or the scan is inside a call that needs this thread.
    void Release() override;

    void onRecScanFinished();

private:
    friend class AIBridgeAccess;

    AIFuncallThread* serverThread = nullptr;
    RecScanThread* recScanThread = nullptr;
    std::map<char, PartitionInfo> partitionsByLetter;
    std::map<int, std::vector<PartitionInfo>> partitionsByDisk;
    std::vector<DiskInfo> diskList;
    std::vector<PartitionInfo> partitionList;
    // Guards the four containers; never held across a call into the host.
    QReadWriteLock snapshotLock_;
};
