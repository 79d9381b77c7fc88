#pragma once

#include "host/udisks/DiskBackend.h"
#include "tests/host/udisks/Parity.h"
#include "tests/host/udisks/PrivateDiskService.h"
#include "tests/support/Printing.h"
#include "tests/support/Threads.h"

#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

constexpr qint64 kMiB = 1024 * 1024;
constexpr int kTestMs = 120000;
constexpr int kSmartAdjustment = 1;
constexpr int kDeleteAll = 2;
constexpr int kInitializeToMbr = 5;
constexpr int kInitializeToGpt = 6;
constexpr int kWipeDisk = 7;
constexpr int kResize = 14;
constexpr int kFormat = 15;
constexpr int kDelete = 16;
constexpr int kSplit = 17;
constexpr int kCreate = 18;
constexpr int kAllocate = 22;
constexpr int kWipePartition = 23;
constexpr int kLetter = 30;
constexpr int kLabel = 31;
constexpr int kSetActive = 33;
constexpr int kSetHidden = 34;
constexpr int kAutoCreate = 43;
constexpr int kLowLevelFormat = 47;
constexpr int kConvertToGpt = 1003;
constexpr int kConvertToMbr = 1004;
constexpr int kCheckFileSystem = 1018;

/// The back end on an empty GPT image, with a disk service on a private bus.
class DiskBackendFixture : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!service.error().isEmpty())
            GTEST_SKIP() << service.error().toStdString();
        openImage(1024 * kMiB, "label: gpt");
    }

    /// Opens the back end on a new image. @p table: the input of sfdisk; empty for a disk without a table.
    void openImage(qint64 size, const QString& table)
    {
        backend.reset();
        image = service.image(QString("image%1.img").arg(++images), size);
        if (!table.isEmpty())
            outputOf("sh", {"-c", QString("printf '%1' | sfdisk -q '%2'").arg(table, image)});
        open();
        ASSERT_NE(backend, nullptr);
    }

    void open()
    {
        auto result = host::DiskBackend::open(service.bus(), {{image, true}});
        ASSERT_FALSE(std::holds_alternative<QString>(result)) << std::get<QString>(result).toStdString();
        backend = std::move(std::get<std::unique_ptr<host::DiskBackend>>(result));
    }

    /// The error of an order; empty if it was carried out. The simulation must then have the same result.
    /// @p onProgress: called with the share of the work that is done.
    QString order(int function, const QVariantMap& params, const std::function<void(double)>& onProgress = {})
    {
        // No order of a test reaches a device that is not the loop device of the test's own image.
        EXPECT_TRUE(PrivateDiskService::loopDeviceOf(image).startsWith("/dev/loop"));
        const auto before = backend->machine();
        const auto execution = backend->execute(function, params);
        QString result = "not ended";
        QObject::connect(
            execution.get(), &host::Execution::ended, execution.get(),
            [&](host::Execution::Outcome, const host::Text& error) { result = error.english(); });
        QObject::connect(execution.get(), &host::Execution::progressed, execution.get(), [&] {
            if (onProgress)
                onProgress(execution->progress());
        });
        execution->start();
        EXPECT_TRUE(pumpUntil([&] { return result != "not ended"; }, kTestMs));
        if (!result.isEmpty())
            return result;
        EXPECT_EQ(differences(simulated(*before, function, params), *backend->machine()), "");
        return result;
    }

    QString create(qint64 size, const QString& fileSystem, const QString& label, int region = 0)
    {
        return order(kCreate, {{"diskIndex", 0},
                               {"unallocatedIndex", region},
                               {"capacity", size},
                               {"fileSystem", fileSystem},
                               {"label", label}});
    }

    const host::Partition& drive(const char* letter)
    {
        const host::Partition* found = backend->machine()->partition(letter);
        static const host::Partition missing;
        EXPECT_NE(found, nullptr) << letter;
        return found == nullptr ? missing : *found;
    }

    /// The partitions of the image as sfdisk reads them from the file.
    QJsonArray table() const
    {
        const QByteArray json = outputOf("sfdisk", {"--json", image}).toUtf8();
        return QJsonDocument::fromJson(json).object()["partitiontable"].toObject()["partitions"].toArray();
    }

    QString tableType() const
    {
        return outputOf("blkid", {"-p", "-s", "PTTYPE", "-o", "value", image}).trimmed();
    }

    /// The device of a partition, from its number.
    QString partitionDevice(int number) const
    {
        const QString loop = PrivateDiskService::loopDeviceOf(image);
        EXPECT_TRUE(loop.startsWith("/dev/loop"));
        return QString("%1p%2").arg(loop).arg(number);
    }

    /// Writes bytes other than zero to a mebibyte of the image.
    void spoil(qint64 offset)
    {
        QFile file(image);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite | QIODevice::Unbuffered));
        ASSERT_TRUE(file.seek(offset));
        ASSERT_EQ(file.write(QByteArray(kMiB, 'x')), kMiB);
    }

    /// Whether the image holds only zeros from @p begin to @p end (exclusive).
    bool isZero(qint64 begin, qint64 end) const
    {
        QFile file(image);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly) && file.seek(begin));
        const QByteArray zeros(kMiB, '\0');
        for (qint64 at = begin; at < end; at += kMiB) {
            const QByteArray read = file.read(std::min(kMiB, end - at));
            if (read != zeros.left(read.size()) || read.isEmpty())
                return false;
        }
        return true;
    }

    /// Why an order is rejected in advance; empty if it is accepted.
    QString rejection(int function, const QVariantMap& params) const
    {
        return backend->taskRejection(function, params).value_or(host::Text()).english();
    }

    /// Of the table and the first partition.
    QString checksum() const
    {
        return outputOf("sh", {"-c", QString("head -c 110M '%1' | sha256sum").arg(image)});
    }

    QString blkid(const char* letter, const char* tag)
    {
        const QString offset = QString::number(drive(letter).startOffset());
        return outputOf("blkid", {"-p", "-s", tag, "-o", "value", "-O", offset, image}).trimmed();
    }

    PrivateDiskService service;
    QString image;
    std::unique_ptr<host::DiskBackend> backend;
    int images = 0;
};
