#pragma once

#include "host/machine/Functions.h"
#include "tests/host/udisks/DiskBackendFixture.h"

#include <QtCore/QFileInfo>

#include <optional>

/// The back end on two images, whose tables and volumes are written to the files before the back end opens.
class CloneFixture : public DiskBackendFixture
{
protected:
    void SetUp() override
    {
        if (!service.error().isEmpty())
            GTEST_SKIP() << service.error().toStdString();
        image = service.image("source.img", 128 * kMiB);
        copy = service.image("copy.img", 160 * kMiB);
        folder = QFileInfo(image).path();
    }

    /// Writes a partition table. @p table: a script for sfdisk.
    static void partition(const QString& file, const QString& table)
    {
        outputOf("sh", {"-c", QString("printf '%1' | sfdisk -q '%2'").arg(table, file)});
    }

    /// A file with a new file system.
    QString volume(qint64 size, const QString& program, QStringList arguments)
    {
        const QString file = service.image(QString("volume%1").arg(++volumes_), size);
        outputOf(program, arguments << file);
        return file;
    }

    /// Random bytes in the scratch folder.
    QString randomFile(qint64 size) const
    {
        const QString file = folder + "/random";
        outputOf("sh", {"-c", QString("head -c %1 /dev/urandom > '%2'").arg(size).arg(file)});
        return file;
    }

    /// Copies a file into an ext4 volume.
    void putInto(const QString& volume, const QString& file) const
    {
        const QTemporaryDir place;
        outputOf("mount", {"-o", "loop", volume, place.path()});
        outputOf("cp", {file, place.path() + "/file"});
        outputOf("umount", {place.path()});
    }

    /// Whether an ext4 volume has that file.
    bool has(const QString& volume, const QString& file) const
    {
        const QTemporaryDir place;
        outputOf("mount", {"-o", "loop,ro,noload", volume, place.path()});
        const bool same = sum(place.path() + "/file") == sum(file);
        outputOf("umount", {place.path()});
        return same;
    }

    /// Writes a volume to an image.
    static void put(const QString& volume, const QString& file, qint64 offset)
    {
        outputOf("dd", {"if=" + volume, "of=" + file, "bs=1M", QString("seek=%1").arg(offset / kMiB),
                        "conv=notrunc,sparse", "status=none"});
    }

    /// A range of an image as a file.
    QString extract(const QString& file, qint64 offset, qint64 size)
    {
        const QString volume = service.image(QString("volume%1").arg(++volumes_), size);
        outputOf("dd", {"if=" + file, "of=" + volume, "bs=1M", QString("skip=%1").arg(offset / kMiB),
                        QString("count=%1").arg(size / kMiB), "conv=notrunc,sparse", "status=none"});
        return volume;
    }

    /// Of the first 60 MiB, which contain the table and the volumes' structures.
    static QString sumOfStart(const QString& file)
    {
        return outputOf("sh", {"-c", QString("head -c 60M '%1' | sha256sum").arg(file)});
    }

    static QString sum(const QString& file) { return outputOf("sha256sum", {file}).section(' ', 0, 0); }

    /// A tag of a volume as blkid reads it from the file; empty without a file system.
    static QString tag(const QString& volume, const char* name)
    {
        return outputOf("sh",
                        {"-c", QString("blkid -p -s %1 -o value '%2' || test $? -eq 2").arg(name, volume)})
            .trimmed();
    }

    static QJsonObject tableOf(const QString& file)
    {
        const QByteArray json = outputOf("sfdisk", {"--json", file}).toUtf8();
        return QJsonDocument::fromJson(json).object()["partitiontable"].toObject();
    }

    /// Opens both images and waits until the source shows that number of partitions.
    void openBoth(int partitions)
    {
        auto result = host::DiskBackend::open(service.bus(), {{image, true}, {copy, true}});
        ASSERT_FALSE(std::holds_alternative<QString>(result)) << std::get<QString>(result).toStdString();
        backend = std::move(std::get<std::unique_ptr<host::DiskBackend>>(result));
        ASSERT_TRUE(pumpUntil([&] { return partitionsOf(0).size() == partitions; }, kTestMs));
    }

    QVector<host::Partition> partitionsOf(int disk) const
    {
        QVector<host::Partition> found;
        for (const host::Partition& entry : backend->machine()->disks.at(disk).partitions) {
            if (!entry.unallocated)
                found.append(entry);
        }
        return found;
    }

    static QVariantMap entryAt(int disk, qint64 offset)
    {
        return {{"diskIndex", disk}, {"startSector", offset / 512}};
    }

    static QVariantMap wholeDisk(int disk) { return {{"diskIndex", disk}, {"isDiskItem", true}}; }

    static QVariantMap fromTo(const QVariantMap& source, const QVariantMap& destination)
    {
        return {{"source", source}, {"destination", destination}};
    }

    /// The error of a clone; empty if it was carried out.
    std::string clone(host::Function function, const QVariantMap& params)
    {
        EXPECT_TRUE(PrivateDiskService::loopDeviceOf(copy).startsWith("/dev/loop"));
        return order(static_cast<int>(function), params).toStdString();
    }

    /// The reason to reject a clone; empty if it is accepted.
    std::string rejection(host::Function function, const QVariantMap& params) const
    {
        const auto reason = backend->taskRejection(static_cast<int>(function), params);
        return reason ? reason->english().toStdString() : std::string();
    }

    QString copy; ///< the second image
    QString folder;

private:
    int volumes_ = 0;
};
