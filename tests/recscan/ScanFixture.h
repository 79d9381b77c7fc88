#pragma once

#include "tests/recscan/ReferralRegistry.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/Printing.h"
#include "tests/support/RecordingHost.h"
#include "tests/support/ScratchApplication.h"

#include <QtCore/QVariantList>

#include <gtest/gtest.h>

class AIFuncallThread;
class RecScanThread;

constexpr qint64 kGib = 1073741824;

/// A disk map of the host: a GPT SSD of 500 GiB with these partitions, and @p more keys over it.
QVariantMap diskMap(int diskIndex, const QVariantList& partitions, const QVariantMap& more = {});

/// A partition map of the host: NTFS, unencrypted, sizes in bytes, and @p more keys over it.
QVariantMap partitionMap(int diskIndex, const QString& letter, qint64 size, qint64 used,
                         const QVariantMap& more = {});

/// A scan in a scratch application on a configurable host. On the initial machine no case fires, and the
/// registry has no referral number.
class ScanFixture : public testing::Test
{
protected:
    ScanFixture();
    ~ScanFixture() override;

    /// Builds the host and pushes the machine.
    void build();
    /// Calls beginRecScan, waits for the end of the scan and returns its records.
    QVariantList scan();
    /// Builds and scans from the saved index after the referral rule. Returns the record, or an empty map
    /// without a record.
    QVariantMap scanFrom(int index);
    /// Calls doRecOperation and waits for the end of its action.
    void answer(const QVariantMap& answer);
    void waitForAnswers();
    /// Starts the agent service, which creates the handler of the actions, and waits for it.
    void startService();
    /// Starts the agent service and blocks it in its port search, without a handler.
    void startServiceHeld();
    /// Unblocks that service and waits for it.
    void letServiceGoOn();
    bool serviceHasHandler();

    /// Makes every readiness check pass, with a list of processors.
    void passReadinessChecks();
    void installBootChecker(const QByteArray& body);

    /// The state file.
    QByteArray state() const;
    void setState(const QByteArray& bytes);
    static QByteArray stateBytes(qint32 index, char done);
    /// The details of all events of that name that were sent.
    QStringList events(const QString& name);
    /// The host calls as "object.member arguments", without telemetry and without those of the push of the
    /// machine.
    QStringList hostCalls();

    void setReferralNumber(const QByteArray& text);
    void setConfig(const QByteArray& ini);
    void setRemoteConfig(const QByteArray& json);

    RecScanThread* thread();
    /// Stops the service and the scan, as the host's manager does.
    void release();
    /// Serves the event loop until the bridge's scan, or @p scanThread, has ended.
    bool waitForScan();
    static bool waitForScan(RecScanThread& scanThread);

    ScratchApplication application;
    ReferralRegistry registry;
    FakePlatform platform;
    RecordingHost host;
    QVariantList machine;
    QVariantList emitted;
    /// The tasks that the conversion tools send to the host's guide.
    QVariantList conversions;

private:
    void beginService();
    void waitForService();
    QString holdFile() const { return application.current() + QLatin1String("/hold"); }

    Platform::Scope scope_{platform};
    QByteArray previousPath_;
    int port_ = 0;
};

/// Checks the type and value of the time and returns the record without it.
QVariantMap withoutTime(const QVariantMap& record);

/// A record with the default buttons in the format of typed(), without its time.
QString plainRecord(const QString& message);
