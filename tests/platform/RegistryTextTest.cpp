// Converts the data of a registry value to a string.
#include "platform/RegistryText.h"

#include <gtest/gtest.h>

namespace {

TEST(RegistryText, OneTerminatingZero_IsRemoved)
{
    EXPECT_EQ(registryText(std::wstring(L"ARM64\0", 6)), QStringLiteral("ARM64"));
    EXPECT_EQ(registryText(std::wstring(L"\0", 1)), QString());
}

TEST(RegistryText, SecondTerminatingZero_IsPartOfTheString)
{
    EXPECT_EQ(registryText(std::wstring(L"ARM64\0\0", 7)), QStringLiteral("ARM64") + QChar(0));
    EXPECT_EQ(registryText(std::wstring(L"\0\0", 2)), QString(QChar(0)));
}

TEST(RegistryText, ZeroInTheMiddle_IsPartOfTheString)
{
    EXPECT_EQ(registryText(std::wstring(L"ARM64\0x\0", 8)),
              QStringLiteral("ARM64") + QChar(0) + QLatin1Char('x'));
}

TEST(RegistryText, DataWithoutAZero_IsUnchanged)
{
    EXPECT_EQ(registryText(L"ARM64"), QStringLiteral("ARM64"));
    EXPECT_EQ(registryText(std::wstring()), QString());
}

} // namespace
