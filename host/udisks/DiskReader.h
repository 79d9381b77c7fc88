#pragma once

#include "host/udisks/DeviceFactsReader.h"
#include "host/udisks/DiskService.h"
#include "host/udisks/Inventory.h"

#include <QtCore/QObject>
#include <QtCore/QTimer>

#include <vector>

namespace host {

/// Reads the disks, and the facts about their file systems, once the service has been quiet for a moment:
/// it reports one change of a partition table in several signals. Application thread.
class DiskReader : public QObject
{
    Q_OBJECT

public:
    DiskReader(DiskService& service, const std::vector<DiskSource>& sources);

    /// read() or failed() follows.
    void readSoon();
    /// An order begins: no reading and no tool runs until resume(). The tools open the devices, and the
    /// kernel changes no partition that is open.
    void pause();
    /// The order has ended. read() or failed() follows.
    void resume();

    DeviceFacts factsOf(const BlockDevice& device) const { return facts_.factsOf(device); }

Q_SIGNALS:
    /// The reading is complete: no change has been reported since it began, or changes are reported all the
    /// time.
    void read(const host::DiskSnapshot& snapshot);
    /// @p error: the wording of the service.
    void failed(QString error);

private:
    void onChanged(const QString& path);
    void restart();
    void remember(const DiskSnapshot& snapshot);
    void start();
    void onSnapshot(const DiskSnapshot& snapshot, const QString& error);
    void rescan(const DiskSnapshot& snapshot);
    void onComplete(const DiskSnapshot& snapshot);

    DiskService& service_;
    const std::vector<DiskSource>& sources_;
    DeviceFactsReader facts_;
    QTimer quietTimer_;
    /// Object paths of the disks and their drives. Other objects can change all the time.
    QStringList paths_;
    bool isPaused_ = false;
    bool isReading_ = false;
    bool changed_ = false; ///< since the current reading has begun
    int attempts_ = 0;     ///< unsettled readings in sequence
    int reading_ = 0;      ///< number of the current reading
};

} // namespace host
