// WMI queries through COM, compared with the output of wmic.
#include "platform/Platform.h"
#include "tests/windows/SystemTools.h"
#include "tests/windows/Wine.h"

#include <gtest/gtest.h>

#include <thread>

#include <objbase.h>

namespace {

const QString kMachine = QStringLiteral("ROOT\\CIMV2");

std::vector<QVariantMap> query(const QString& table, const QStringList& properties)
{
    return Platform::instance().wmiQuery(kMachine, QStringLiteral("SELECT * FROM ") + table, properties);
}

class WmiAndWmic : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!hasWmic())
            GTEST_SKIP() << "this system has no wmic";
    }
};

TEST_F(WmiAndWmic, Processor_HasTheNameWidthAndCountsThatWmicPrints)
{
    const auto rows =
        query(QStringLiteral("Win32_Processor"),
              {QStringLiteral("Name"), QStringLiteral("AddressWidth"), QStringLiteral("NumberOfCores"),
               QStringLiteral("NumberOfLogicalProcessors"), QStringLiteral("MaxClockSpeed")});
    ASSERT_FALSE(rows.empty());
    for (const char* name :
         {"Name", "AddressWidth", "NumberOfCores", "NumberOfLogicalProcessors", "MaxClockSpeed"}) {
        const QString property = QString::fromLatin1(name);
        EXPECT_EQ(rows.front().value(property).toString().trimmed(),
                  wmicValue(QStringLiteral("cpu"), property))
            << name;
    }
    EXPECT_EQ(rows.front().value(QStringLiteral("Name")).userType(), int(QMetaType::QString));
    EXPECT_EQ(rows.front().value(QStringLiteral("AddressWidth")).userType(), int(QMetaType::Int));
}

TEST_F(WmiAndWmic, OperatingSystem_HasTheArchitectureThatWmicPrints)
{
    const auto rows = query(QStringLiteral("Win32_OperatingSystem"), {QStringLiteral("OSArchitecture")});
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows.front().value(QStringLiteral("OSArchitecture")).toString(),
              wmicValue(QStringLiteral("os"), QStringLiteral("OSArchitecture")));
}

TEST_F(WmiAndWmic, ManyRows_AreReturnedInTheOrderOfWmic)
{
    const auto rows = query(QStringLiteral("Win32_LogicalDisk"), {QStringLiteral("DeviceID")});
    QStringList letters;
    for (const QVariantMap& row : rows)
        letters << row.value(QStringLiteral("DeviceID")).toString();
    EXPECT_EQ(letters, wmicRows(QStringLiteral("logicaldisk"), QStringLiteral("DeviceID")));
    if (letters.size() < 2 && !runsUnderWine())
        GTEST_SKIP() << "this system has only one drive letter";
    EXPECT_GE(letters.size(), 2);
}

TEST(Wmi, MissingProperty_IsInvalidAndTheOthersAreReturned)
{
    const auto rows = query(QStringLiteral("Win32_OperatingSystem"),
                            {QStringLiteral("NoSuchProperty"), QStringLiteral("OSArchitecture")});
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_FALSE(rows.front().value(QStringLiteral("NoSuchProperty")).isValid());
    EXPECT_TRUE(rows.front().value(QStringLiteral("OSArchitecture")).isValid());
}

TEST(Wmi, UnreachableNamespace_ReturnsZeroRows)
{
    EXPECT_TRUE(Platform::instance()
                    .wmiQuery(QStringLiteral("ROOT\\NoSuchNamespace"),
                              QStringLiteral("SELECT * FROM Win32_Processor"), {QStringLiteral("Name")})
                    .empty());
}

TEST(Wmi, InvalidQuery_ReturnsZeroRows)
{
    EXPECT_TRUE(Platform::instance()
                    .wmiQuery(kMachine, QStringLiteral("not a query"), {QStringLiteral("Name")})
                    .empty());
}

TEST(Wmi, ThreadInASingleThreadedApartment_ReceivesRows)
{
    std::size_t rows = 0;
    std::thread other([&rows] {
        CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        rows = query(QStringLiteral("Win32_OperatingSystem"), {QStringLiteral("OSArchitecture")}).size();
    });
    other.join();
    EXPECT_EQ(rows, 1u);
}

} // namespace
