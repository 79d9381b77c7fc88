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

/// A scan in a scratch application on a host to order. The machine, as it stands at first, gives no case
/// anything to say, and the registry has no referral number.
class ScanFixture : public testing::Test
{
protected:
    ScanFixture();
    ~ScanFixture() override;

    /// Builds the host and pushes the machine.
    void build();
    /// beginRecScan, and waits until its end has been told; gives the records that came out.
    QVariantList scan();
    /// build and scan with the saved index, the referral rule being over; gives the one record, empty if
    /// there is none.
    QVariantMap scanFrom(int index);
    /// doRecOperation, and waits until its action is over.
    void answer(const QVariantMap& answer);
    void waitForAnswers();
    /// Starts the agent service, whose handler the actions need, and waits for it.
    void startService();
    /// Starts the agent service and leaves it at its search for a port, without a handler.
    void startServiceHeld();
    /// Lets that service go on, and waits for it.
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
    /// The calls that reached the host, without telemetry and the push of the machine: "object.member
    /// arguments".
    QStringList hostCalls();

    void setReferralNumber(const QByteArray& text);
    void setConfig(const QByteArray& ini);
    void setRemoteConfig(const QByteArray& json);

    RecScanThread* thread();
    /// Ends the service and the scan, as the host's manager does.
    void release();
    /// Serves the event loop until the bridge's scan, or that one, has ended.
    bool waitForScan();
    static bool waitForScan(RecScanThread& scanThread);

    ScratchApplication application;
    ReferralRegistry registry;
    FakePlatform platform;
    RecordingHost host;
    QVariantList machine;
    QVariantList emitted;
    /// What the conversion tools put before the host's guide.
    QVariantList conversions;

private:
    void beginService();
    void waitForService();
    QString holdFile() const { return application.current() + QLatin1String("/hold"); }

    Platform::Scope scope_{platform};
    QByteArray previousPath_;
    int port_ = 0;
};

/// The record without its time, after a look at the time's type and value.
QVariantMap withoutTime(const QVariantMap& record);

/// The whole plain record as typed() shows it, less its time.
QString plainRecord(const QString& message);
