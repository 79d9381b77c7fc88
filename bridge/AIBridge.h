#pragma once

#include "inventory/Inventory.h"
#include "plugin/ComponentBase.h"
#include "tools/HostPages.h"
#include "tools/ToolBridge.h"

#include <QtCore/QVariantList>
#include <QtCore/QVariantMap>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

// AIBRIDGE_BUILD: the library's own sources. AIBRIDGE_STATIC: programs that link those sources statically,
// such as tests.
#if defined(AIBRIDGE_BUILD)
#define AIBRIDGE_EXPORT Q_DECL_EXPORT
#elif defined(AIBRIDGE_STATIC)
#define AIBRIDGE_EXPORT
#else
#define AIBRIDGE_EXPORT Q_DECL_IMPORT
#endif

class AIFuncallThread;
class RecScanThread;

/// The component that the library provides to its host. It creates the threads, owns the parts and delegates
/// to them.
///
/// Calling order: getInstance, setEngine, init, then setDiskInfo before an agent can see a disk. The object
/// has no parent; the host deletes it after Release.
///
/// Threads: the invokables, setEngine, init and Release belong to the application thread. Every other member
/// can be called on any thread. Members that call the host wait until the application thread has run the
/// host's method, so that thread must keep its event loop running.
class AIBRIDGE_EXPORT AIBridge : public CComponentBase
{
    Q_OBJECT

public:
    AIBridge();
    /// Does not stop the threads: call Release first.
    ~AIBridge() override;

    QString name() const override;
    /// Starts the agent service. The port search of its thread can take up to 30 seconds.
    ///
    /// Has no effect while a service runs (see isServerRunning). After Release, or after a service that ended
    /// because its address could not be bound, init deletes the previous thread object and starts a new
    /// service. Do not call Release before the new service serves. AGENT_NATIVE_PORT and AGENT_CHAT_PORT keep
    /// the previous ports until the port search ends.
    void init() override;
    /// False: the component has no page in the host's layout.
    bool canLayout() const override;
    void setEngine(QQmlApplicationEngine* engine) override;

Q_SIGNALS:
    /// A recommendation of the scan, a QVariantMap. Emitted on the application thread.
    void sigRecScanResult(QVariant v);
    /// Opens the clone guide; @p v is a QVariantMap. Emitted on the calling thread.
    void sigCloneResult(QVariant v);
    /// Opens the conversion guide; @p v is a QVariantMap. Emitted on the calling thread.
    void sigConvertResult(QVariant v);
    /// The gate admitted a call, and the agent is about to call a tool. Emitted on a connection thread.
    void sigAbout2CallFun(QString toolCalls);
    /// The agent has called a tool; @p b is true if the host accepted the order. Emitted on a connection
    /// thread.
    void sigAfterCallFun(QString result, bool b);
    /// Never emitted; it exists because hosts can connect to it.
    void sigClearRecScan();

public:
    /// Replaces the inventory with @p info, a list of disk maps.
    Q_INVOKABLE void setDiskInfo(QVariantList info);
    /// True from init until the thread of the service has ended.
    Q_INVOKABLE bool isServerRunning();
    /// Starts a recommendation scan. Has no effect during a scan. The first call copies the inventory.
    Q_INVOKABLE void beginRecScan();
    /// Has no effect, deliberately: only Release stops a scan.
    Q_INVOKABLE void stopRecScan();
    /// Accepts the user's answer to a recommendation. Returns at once; the action runs 100 milliseconds
    /// later.
    Q_INVOKABLE void doRecOperation(QVariant info);

    /// @name Orders to the host's pages, see HostPages
    /// @{
    void doFunFromAI(int functionIndex, QVariantMap params);
    bool isFunValidForAI(int functionIndex, QVariantMap params);
    bool doPrFunForAI(bool isPartRecov, QVariantMap info);
    bool openDiskHealth(int diskIndex);
    bool isBmFunValid(QVariantMap info);
    bool doBmFunForAI(QVariantMap info);
    bool isAlreadyPreOS();
    /// @}

    /// @name The inventory, see Inventory
    /// @{
    void getDiskInfo(std::vector<DiskInfo>& out);
    void getPartitionInfo(std::vector<PartitionInfo>& out, int diskIndex);
    void getAllPartitionInfo(std::vector<PartitionInfo>& out);
    void getPartitionInfo(PartitionInfo& out, const std::string& driveLetter);
    void parsePartitionInfo(const QVariantList& partitions);
    int findOneUnallocatedPartition(int diskIndex, std::int64_t size);
    std::int64_t getPartitionSize(const std::string& driveLetter);
    /// @}

protected:
    /// Stops the service and the scan and waits for both without a timeout. Do not call it before the service
    /// serves, or while a tool or the scan is in a call that needs this thread.
    void Release() override;

    void onRecScanFinished();

private:
    friend class AIBridgeAccess;
    class Events;

    AIFuncallThread* serverThread = nullptr;
    RecScanThread* recScanThread = nullptr;
    Inventory inventory_;
    const HostPages pages_{*this, inventory_};
    const std::unique_ptr<const ToolEvents> events_;
    const ToolBridge toolBridge_;
};
