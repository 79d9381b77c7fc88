// A back end that becomes unavailable, as the host shows it.
#include "host/objects/HostCore.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QSignalSpy>

#include <gtest/gtest.h>

namespace {

const char* const kReason = "The disk service is not running.";

class LosableBackend : public host::Backend
{
public:
    LosableBackend() : Backend(host::Machine()) { addNotice(host::Text("The image was still attached.")); }

    host::Rejection orderRejection(int, const QVariantMap&) const override { return reason; }
    host::Rejection taskRejection(int, const QVariantMap&) const override { return reason; }
    std::unique_ptr<host::Execution> execute(int, const QVariantMap&) override { return nullptr; }
    host::Rejection unavailability() const override { return reason; }

    void set(const host::Rejection& next)
    {
        reason = next;
        Q_EMIT availabilityChanged();
    }
    using Backend::addNotice;

    host::Rejection reason;
};

class Availability : public testing::Test
{
protected:
    QString lastLine() { return core.log()->stringList().value(core.log()->rowCount() - 1); }

    LosableBackend* backend = new LosableBackend;
    host::HostCore core{std::unique_ptr<host::Backend>(backend)};
};

TEST_F(Availability, LostBackEnd_IsAProblemUntilItIsBack)
{
    QSignalSpy changes(&core, &host::HostCore::problemChanged);
    EXPECT_EQ(core.problem(), "");
    backend->set(host::Text(kReason));
    EXPECT_EQ(core.problem(), kReason);
    EXPECT_TRUE(lastLine().endsWith(kReason)) << lastLine().toStdString();
    backend->set(host::kAccepted);
    EXPECT_EQ(core.problem(), "");
    EXPECT_TRUE(lastLine().endsWith("orders can run again")) << lastLine().toStdString();
    EXPECT_EQ(changes.size(), 2);
}

TEST_F(Availability, RepeatedLoss_IsLoggedOnce)
{
    backend->set(host::Text(kReason));
    const int lines = core.log()->rowCount();
    backend->set(host::Text(kReason));
    EXPECT_EQ(core.log()->rowCount(), lines);
}

TEST_F(Availability, Loss_IsInTheTranscript)
{
    const QTemporaryDir folder;
    ASSERT_EQ(core.transcript().open(folder.filePath("t")), "");
    backend->set(host::Text(kReason));
    QFile file(folder.filePath("t"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray line = file.readAll();
    EXPECT_NE(line.indexOf("\"kind\":\"availability\""), -1) << line.constData();
    EXPECT_NE(line.indexOf("\"available\":false"), -1) << line.constData();
    EXPECT_NE(line.indexOf("\"reason\":\"The disk service is not running.\""), -1) << line.constData();
}

TEST_F(Availability, Notice_IsLoggedAlsoFromTheStart)
{
    EXPECT_TRUE(lastLine().endsWith("The image was still attached.")) << lastLine().toStdString();
    backend->addNotice(host::Text("The letters could not be read."));
    EXPECT_TRUE(lastLine().endsWith("The letters could not be read.")) << lastLine().toStdString();
}

} // namespace
