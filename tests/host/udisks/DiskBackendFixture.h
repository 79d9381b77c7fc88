#pragma once

#include "host/udisks/DiskBackend.h"
#include "tests/host/udisks/Parity.h"
#include "tests/host/udisks/PrivateDiskService.h"
#include "tests/support/Printing.h"
#include "tests/support/Threads.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <gtest/gtest.h>

constexpr qint64 kMiB = 1024 * 1024;
constexpr int kTestMs = 120000;
constexpr int kInitializeToMbr = 5;
constexpr int kResize = 14;
constexpr int kFormat = 15;
constexpr int kDelete = 16;
constexpr int kCreate = 18;
constexpr int kLetter = 30;
constexpr int kLabel = 31;

/// The back end on an empty GPT image, with a disk service on a private bus.
class DiskBackendFixture : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!service.error().isEmpty())
            GTEST_SKIP() << service.error().toStdString();
        image = service.image("a.img", 1024 * kMiB);
        outputOf("sh", {"-c", QString("echo label: gpt | sfdisk -q '%1'").arg(image)});
        open();
    }

    void open()
    {
        auto result = host::DiskBackend::open(service.bus(), {{image, true}});
        ASSERT_FALSE(std::holds_alternative<QString>(result)) << std::get<QString>(result).toStdString();
        backend = std::move(std::get<std::unique_ptr<host::DiskBackend>>(result));
    }

    /// The error of an order; empty if it was carried out. The simulation must then have the same result.
    QString order(int function, const QVariantMap& params)
    {
        // No order of a test reaches a device that is not the loop device of the test's own image.
        EXPECT_TRUE(PrivateDiskService::loopDeviceOf(image).startsWith("/dev/loop"));
        const auto before = backend->machine();
        const auto execution = backend->execute(function, params);
        QString result = "not ended";
        QObject::connect(
            execution.get(), &host::Execution::ended, execution.get(),
            [&](host::Execution::Outcome, const host::Text& error) { result = error.english(); });
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
};
