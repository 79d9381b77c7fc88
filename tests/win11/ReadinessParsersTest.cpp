// The parsers of the answers of the system, with answers in the original format.
#include "win11/ReadinessParsers.h"

#include <QtCore/QString>

#include <gtest/gtest.h>

namespace {

std::vector<QVariantMap> systems(const char* architecture)
{
    return {{{"OSArchitecture", QString::fromUtf8(architecture)}}};
}

QVariantMap processor(const char* name, int width)
{
    return {{"Name", name}, {"AddressWidth", width}, {"NumberOfCores", 4}, {"MaxClockSpeed", 2800}};
}

TEST(ProcessorRows, OneSocket_IsReadUnchanged)
{
    const ProcessorFacts facts =
        readProcessorFacts({processor("Intel(R) Core(TM) i5-8400 CPU @ 2.80GHz", 64)}, systems("64-bit"));
    EXPECT_EQ(facts.name, "Intel(R) Core(TM) i5-8400 CPU @ 2.80GHz");
    EXPECT_EQ(facts.addressWidth, 64);
    EXPECT_EQ(facts.systemWidth, 64);
}

TEST(ProcessorRows, TwoSockets_TheLastCounts)
{
    const ProcessorFacts facts =
        readProcessorFacts({processor("First", 64), processor("Second", 32)}, systems("64-bit"));
    EXPECT_EQ(facts.name, "Second");
    EXPECT_EQ(facts.addressWidth, 32);
}

TEST(ProcessorRows, NoRow_LeavesTheDefaults)
{
    const ProcessorFacts facts = readProcessorFacts({}, {});
    EXPECT_EQ(facts.name, QString());
    EXPECT_EQ(facts.addressWidth, 0);
    EXPECT_EQ(facts.systemWidth, 0);
}

TEST(ProcessorRows, SystemWidth_Is64OnlyIfTheStringContainsTheNumber)
{
    EXPECT_EQ(readProcessorFacts({}, systems("64-bit")).systemWidth, 64);
    EXPECT_EQ(readProcessorFacts({}, systems("ARM 64-bit Processor")).systemWidth, 64);
    EXPECT_EQ(readProcessorFacts({}, systems("32-bit")).systemWidth, 32);
    EXPECT_EQ(readProcessorFacts({}, systems("")).systemWidth, 32);
}

TEST(ProcessorRows, LastRowWithoutTheProperties_OverwritesWithDefaults)
{
    const ProcessorFacts facts =
        readProcessorFacts({processor("First", 64), QVariantMap()}, systems("64-bit"));
    EXPECT_EQ(facts.name, QString());
    EXPECT_EQ(facts.addressWidth, 0);
}

QVariantMap tpm(bool activated, bool enabled, const char* version)
{
    return {{"IsActivated_InitialValue", activated},
            {"IsEnabled_InitialValue", enabled},
            {"SpecVersion", version}};
}

TEST(TpmRows, Version2_ActivatedAndEnabled_IsReady)
{
    EXPECT_TRUE(isTpmReady({tpm(true, true, "2.0, 0, 1.38")}));
    EXPECT_TRUE(isTpmReady({tpm(true, true, "2.0")}));
    EXPECT_TRUE(isTpmReady({tpm(true, true, "2.1, 0, 1.59")}));
}

TEST(TpmRows, Version1_IsNotReady)
{
    EXPECT_FALSE(isTpmReady({tpm(true, true, "1.2, 2, 3")}));
    EXPECT_FALSE(isTpmReady({tpm(true, true, "1.99")}));
}

TEST(TpmRows, SwitchedOff_IsNotReady)
{
    EXPECT_FALSE(isTpmReady({tpm(false, true, "2.0, 0, 1.38")}));
    EXPECT_FALSE(isTpmReady({tpm(true, false, "2.0, 0, 1.38")}));
}

TEST(TpmRows, NumberAsTruthValue_AnyButZeroIsTrue)
{
    EXPECT_TRUE(isTpmReady(
        {{{"IsActivated_InitialValue", -1}, {"IsEnabled_InitialValue", 2}, {"SpecVersion", "2.0"}}}));
    EXPECT_FALSE(isTpmReady(
        {{{"IsActivated_InitialValue", 0}, {"IsEnabled_InitialValue", 2}, {"SpecVersion", "2.0"}}}));
}

TEST(TpmRows, NoRow_IsNotReady)
{
    EXPECT_FALSE(isTpmReady({}));
}

TEST(TpmRows, LaterRow_OverwritesTheEarlier)
{
    EXPECT_FALSE(isTpmReady({tpm(true, true, "2.0"), tpm(true, true, "1.2")}));
    EXPECT_TRUE(isTpmReady({tpm(false, false, "1.2"), tpm(true, true, "2.0")}));
}

TEST(TpmRows, VersionThatIsNotANumber_IsNotReady)
{
    EXPECT_FALSE(isTpmReady({tpm(true, true, "Not Supported")}));
    EXPECT_FALSE(isTpmReady({tpm(true, true, "")}));
    EXPECT_FALSE(isTpmReady({QVariantMap()}));
}

// One display adapter in the format of the tool: lines end in CR LF.
QByteArray adapter(const QByteArray& ddi, const QByteArray& model)
{
    return "---------------\r\nDisplay Devices\r\n---------------\r\n"
           "           Card name: NVIDIA GeForce GTX 1060 6GB\r\n"
           "        Manufacturer: NVIDIA\r\n"
           "           Chip type: GeForce GTX 1060 6GB\r\n"
           "      Dedicated Memory: 6052 MB\r\n"
           "        Driver Version: 31.00.0015.3623\r\n"
           "           DDI Version: " +
           ddi + "\r\n       Feature Levels: 12_1,12_0,11_1,11_0,10_1,10_0,9_3,9_2,9_1\r\n" +
           "         Driver Model: " + model + "\r\n  Hardware Scheduling: Supported:True Enabled:True\r\n";
}

TEST(DirectXListing, Ddi12_WithDriverModel2Or3_IsReady)
{
    EXPECT_TRUE(isDirectXReady(adapter("12", "WDDM 3.1")));
    EXPECT_TRUE(isDirectXReady(adapter("12", "WDDM 2.7")));
    EXPECT_TRUE(isDirectXReady(adapter("12.2", "3.0")));
    EXPECT_TRUE(isDirectXReady(adapter("12", "2.0")));
}

TEST(DirectXListing, NoBreakSpaceInTheModel_IsRead)
{
    EXPECT_TRUE(isDirectXReady(adapter("12", "WDDM\xA0"
                                             "2.7")));
    EXPECT_TRUE(isDirectXReady(adapter("12", "WDDM\xA0"
                                             "3.0")));
    EXPECT_FALSE(isDirectXReady(adapter("12", "WDDM\xA0"
                                              "1.3")));
}

TEST(DirectXListing, Model13_IsNotReadyWithOrWithoutDdi12)
{
    EXPECT_FALSE(isDirectXReady(adapter("12", "WDDM 1.3")));
    EXPECT_FALSE(isDirectXReady(adapter("11.2", "WDDM 1.3")));
}

TEST(DirectXListing, Ddi11_IsNotReady)
{
    EXPECT_FALSE(isDirectXReady(adapter("11.2", "WDDM 2.7")));
}

TEST(DirectXListing, SecondAdapterOfALowerModel_IsStillReady)
{
    EXPECT_TRUE(isDirectXReady(adapter("12", "WDDM 3.1") + adapter("11", "WDDM 2.0")));
    EXPECT_TRUE(isDirectXReady(adapter("12", "WDDM 2.7") + adapter("11", "WDDM 1.3")));
}

TEST(DirectXListing, DdiOfOneAdapterAndModelOfTheOther_AreReadyTogether)
{
    EXPECT_TRUE(isDirectXReady(adapter("12", "WDDM 1.3") + adapter("11", "WDDM 2.0")));
}

TEST(DirectXListing, EmptyOrGarbage_IsNotReady)
{
    EXPECT_FALSE(isDirectXReady(QByteArray()));
    EXPECT_FALSE(isDirectXReady(QByteArray("\x00\xff\n DDI Version: 12\n", 19)));
}

QByteArray utf16(const QString& text)
{
    return QByteArray("\xff\xfe", 2) + QByteArray(reinterpret_cast<const char*>(text.utf16()),
                                                  text.size() * static_cast<int>(sizeof(ushort)));
}

TEST(SecureBootOutput, TrueOrFalseIn16BitText_IsKnown)
{
    EXPECT_TRUE(isSecureBootKnown(utf16("True\r\n")));
    EXPECT_TRUE(isSecureBootKnown(utf16("False\r\n")));
}

TEST(SecureBootOutput, PlainText_IsKnown)
{
    EXPECT_TRUE(isSecureBootKnown("True\r\n"));
}

TEST(SecureBootOutput, NeitherWord_IsNotKnown)
{
    EXPECT_FALSE(isSecureBootKnown(QByteArray()));
    EXPECT_FALSE(isSecureBootKnown(utf16("true\r\n")));
    EXPECT_FALSE(isSecureBootKnown("FALSE"));
    EXPECT_FALSE(isSecureBootKnown(
        utf16("Confirm-SecureBootUEFI : Cmdlet not supported on this platform: 0xC0000002")));
}

} // namespace
