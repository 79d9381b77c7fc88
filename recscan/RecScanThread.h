#pragma once

#include "service/WireTypes.h"

#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QThread>
#include <QtCore/QVariantMap>

#include <atomic>
#include <map>
#include <vector>

class AIBridge;
class CZorHandle;
class QQmlEngine;

/// The recommendation scan: looks once at its private copy of the inventory and holds at most one
/// recommendation. The object lives as long as the bridge and can be started again.
class RecScanThread : public QThread
{
    Q_OBJECT

public:
    explicit RecScanThread(AIBridge* parent);

    /// The engine through which the scan reaches the host; not owned. Before start.
    void setScanEngine(QQmlEngine* engine);
    /// Takes copies of the inventory. Before start.
    void setScanData(const std::vector<DiskInfo>& diskList,
                     const std::map<int, std::vector<PartitionInfo>>& partitionsByDisk,
                     const std::map<char, PartitionInfo>& partitionsByLetter);

    void run() override;

    /// Asks the scan to end before its next case. Any thread.
    void requestStop();
    /// True once a recommendation is held. After the thread has finished.
    bool hasResult() const;
    /// The recommendation, a QVariantMap inside. After the thread has finished.
    QVariant result() const;

private:
    std::atomic<bool> stopRequested{false};
    bool found = false;
    QVariant resultRecord;
    AIBridge* scanOwner;
    QQmlEngine* scanEngine = nullptr;
    std::map<char, PartitionInfo> scanPartitionsByLetter;
    std::map<int, std::vector<PartitionInfo>> scanPartitionsByDisk;
    std::vector<DiskInfo> scanDiskList;
};
