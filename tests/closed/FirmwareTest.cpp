// The firmware stand-in: its rule with fake system calls, and the override by the environment.
#include "closed/LLFProc/Firmware.h"
#include "closed/LLFProc/LLFProc.h"

#include <QtCore/QFileInfo>

#include <gtest/gtest.h>

namespace {

FirmwareCalls reporting(quint32 type, bool succeeds = true)
{
    FirmwareCalls calls;
    calls.type = [type, succeeds](quint32* result) {
        *result = type;
        return succeeds;
    };
    calls.variableError = [] {
        ADD_FAILURE() << "the variable was read although the system reports its type";
        return quint32(998);
    };
    return calls;
}

FirmwareCalls withoutTypeFunction(quint32 variableError)
{
    FirmwareCalls calls;
    calls.variableError = [variableError] { return variableError; };
    return calls;
}

TEST(FirmwareType, Two_IsUefi)
{
    EXPECT_TRUE(startedThroughUefi(reporting(2)));
}

TEST(FirmwareType, UnknownBiosAndLaterNumbers_AreNotUefi)
{
    for (quint32 type : {0u, 1u, 3u})
        EXPECT_FALSE(startedThroughUefi(reporting(type))) << type;
}

TEST(FirmwareType, FailedCallThatWroteTwo_IsNotUefi)
{
    EXPECT_FALSE(startedThroughUefi(reporting(2, false)));
}

TEST(FirmwareType, SystemWithoutTheFunction_IsUefiUnlessReadingAVariableIsInvalid)
{
    EXPECT_FALSE(startedThroughUefi(withoutTypeFunction(1)));   // ERROR_INVALID_FUNCTION
    EXPECT_TRUE(startedThroughUefi(withoutTypeFunction(998)));  // ERROR_NOACCESS
    EXPECT_TRUE(startedThroughUefi(withoutTypeFunction(1314))); // ERROR_PRIVILEGE_NOT_HELD
    EXPECT_TRUE(startedThroughUefi(withoutTypeFunction(203)));  // ERROR_ENVVAR_NOT_FOUND
}

TEST(FirmwareOverride, ZeroAndOne_OverrideTheMachine)
{
    qputenv("AIBRIDGE_UEFI", "0");
    EXPECT_FALSE(MayBeSupportUEFI());
    qputenv("AIBRIDGE_UEFI", "1");
    EXPECT_TRUE(MayBeSupportUEFI());
}

TEST(FirmwareOverride, AnyOtherValue_IsIgnored)
{
    qunsetenv("AIBRIDGE_UEFI");
    const bool machine = MayBeSupportUEFI();
    for (const char* value : {"", "2", "yes", "true", " 1", "01", "-1"}) {
        qputenv("AIBRIDGE_UEFI", value);
        EXPECT_EQ(MayBeSupportUEFI(), machine) << '"' << value << '"';
    }
}

} // namespace
