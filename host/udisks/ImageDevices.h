#pragma once

#include "host/machine/Text.h"
#include "host/udisks/DiskService.h"
#include "host/udisks/Inventory.h"
#include "host/udisks/StateFile.h"

#include <QtCore/QFile>

#include <memory>
#include <utility>
#include <vector>

namespace host {

/// Attaches images as loop devices, and detaches them. Application thread.
///
/// Each image is locked as long as the object or its process exists, so that a second host cannot use it. The
/// state file names the attached images: a later host uses, and finally detaches, what a killed host has
/// left, but never what another program has attached.
class ImageDevices
{
public:
    explicit ImageDevices(DiskService& service) : service_(service) {}
    /// Detaches.
    ~ImageDevices();

    /// Locks and attaches the images among @p sources; read-only if they cannot be written. Waits for the
    /// service. The result is an error sentence that names the image; empty on success.
    QString attach(const std::vector<DiskSource>& sources);
    /// Detaches what attach() attached or took over. Waits for the service.
    void detach();
    /// Leaves the devices of a killed host attached, because the host cannot start. The service can still be
    /// carrying out an order on them; a detached device would disappear at its end.
    void leaveTakenOver();
    /// Removes and returns what the user should know about the attached images.
    std::vector<Text> takeNotices() { return std::exchange(notices_, {}); }

private:
    struct Image
    {
        DiskSource source;
        std::unique_ptr<QFile> lock; ///< holds the lock; never passed to the service, which would keep it
        bool isReadOnly = false;
        bool isTakenOver = false;
        QString path; ///< object path of the loop device
    };
    QString lock(Image& image);
    QString attachImage(Image& image, const DiskSnapshot& snapshot);
    QString takeOver(Image& image, const BlockDevice& device);
    QString setUp(Image& image);
    void remove(const Image& image);
    void record(const Image& image, bool isAttached);

    DiskService& service_;
    StateFile state_{QStringLiteral("images.json")};
    std::vector<Image> images_;
    std::vector<Text> notices_;
};

} // namespace host
