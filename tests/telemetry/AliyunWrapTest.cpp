// Binding the closed telemetry library: its path, its entry points, and missing parts.
#include "telemetry/AliyunWrap.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <vector>

namespace {

// A fake module loader with at most one library. It records each request.
struct FakeModules
{
    std::wstring self = L"C:\\Program Files\\Host\\AIBridge.dll";
    bool libraryExists = true;
    std::set<std::string> missing;
    std::vector<std::wstring> loaded;
    std::vector<std::string> resolved;
    std::vector<void*> modules;
    int library = 0;

    ModuleAccess access()
    {
        return {[this] { return self; },
                [this](const std::wstring& path) -> void* {
                    loaded.push_back(path);
                    return libraryExists ? &library : nullptr;
                },
                [this](void* module, const char* name) -> void* {
                    modules.push_back(module);
                    resolved.emplace_back(name);
                    // A distinct address for each name: its position in the order of the requests.
                    return missing.count(name) ? nullptr : reinterpret_cast<void*>(resolved.size());
                }};
    }
};

bool isEmpty(const AliyunWrapTable& table)
{
    return table.module == nullptr && std::all_of(table.entryPoints.begin(), table.entryPoints.end(),
                                                  [](void* p) { return p == nullptr; });
}

TEST(AliyunWrap, NewTable_IsEmpty)
{
    EXPECT_TRUE(isEmpty(AliyunWrapTable()));
}

TEST(AliyunWrap, Library_IsLoadedFromTheFolderOfThisModule)
{
    FakeModules modules;
    AliyunWrapTable table;
    bindAliyunWrap(table, modules.access());
    EXPECT_EQ(modules.loaded, std::vector<std::wstring>{L"C:\\Program Files\\Host\\AliyunWrap.DLL"});
    EXPECT_EQ(table.module, &modules.library);
}

TEST(AliyunWrap, SixteenEntryPoints_AreResolvedAndStoredInOrder)
{
    FakeModules modules;
    AliyunWrapTable table;
    bindAliyunWrap(table, modules.access());
    EXPECT_EQ(modules.resolved,
              (std::vector<std::string>{"AliyunOpenSession", "AliyunCloseSession", "AliyunAddParamToSessionA",
                                        "AliyunAddParamToSessionW", "AliyunSendInfo",
                                        "AliyunEnableUserInfoCollect", "AliyunInstallConfigFilePath",
                                        "AliyunInstallInitUid", "AliyunUninstallStart", "AliyunUninstallEnd",
                                        "AliyunIsEnableUserInfoCollect", "AliyunEndCache", "AliyunGetUserUid",
                                        "AliyunStopProcess", "AliyunGetKeyValue", "AliyunSetKeyValue"}));
    ASSERT_EQ(table.entryPoints.size(), 16u);
    for (std::size_t i = 0; i < table.entryPoints.size(); ++i)
        EXPECT_EQ(table.entryPoints[i], reinterpret_cast<void*>(i + 1));
    EXPECT_EQ(modules.modules, std::vector<void*>(16, &modules.library));
}

TEST(AliyunWrap, MissingLibrary_LeavesTheTableEmpty)
{
    FakeModules modules;
    modules.libraryExists = false;
    AliyunWrapTable table;
    bindAliyunWrap(table, modules.access());
    EXPECT_TRUE(isEmpty(table));
    EXPECT_TRUE(modules.resolved.empty());
}

TEST(AliyunWrap, MissingEntryPoints_StayNullAndTheOthersAreFilled)
{
    FakeModules modules;
    modules.missing = {"AliyunOpenSession", "AliyunEndCache", "AliyunSetKeyValue"};
    AliyunWrapTable table;
    bindAliyunWrap(table, modules.access());
    EXPECT_EQ(table.module, &modules.library);
    for (std::size_t i = 0; i < table.entryPoints.size(); ++i)
        EXPECT_EQ(table.entryPoints[i] == nullptr, i == 0 || i == 11 || i == 15) << i;
}

TEST(AliyunWrap, ModulePathWithoutABackslash_LoadsNothing)
{
    for (const wchar_t* self : {L"", L"AIBridge.dll", L"C:/Host/AIBridge.dll"}) {
        FakeModules modules;
        modules.self = self;
        AliyunWrapTable table;
        bindAliyunWrap(table, modules.access());
        EXPECT_TRUE(modules.loaded.empty());
        EXPECT_TRUE(isEmpty(table));
    }
}

TEST(AliyunWrap, LibraryPath_MayHaveUpTo259Characters)
{
    // 245 characters of folder and 14 of name.
    FakeModules modules;
    modules.self = L"C:\\" + std::wstring(241, L'f') + L"\\a.dll";
    AliyunWrapTable table;
    bindAliyunWrap(table, modules.access());
    ASSERT_EQ(modules.loaded.size(), 1u);
    EXPECT_EQ(modules.loaded[0].size(), 259u);

    FakeModules longer;
    longer.self = L"C:\\" + std::wstring(242, L'f') + L"\\a.dll";
    AliyunWrapTable empty;
    bindAliyunWrap(empty, longer.access());
    EXPECT_TRUE(longer.loaded.empty());
    EXPECT_TRUE(isEmpty(empty));
}

TEST(AliyunWrap, ModulePathOf260CharactersOrMore_LeavesTheTableEmpty)
{
    const auto loads = [](const std::wstring& self) {
        FakeModules modules;
        modules.self = self;
        AliyunWrapTable table;
        bindAliyunWrap(table, modules.access());
        return !isEmpty(table);
    };
    // A short folder and a long name: only the module's path exceeds the limit, not the library's.
    EXPECT_TRUE(loads(L"C:\\Host\\" + std::wstring(251, L'n')));
    EXPECT_FALSE(loads(L"C:\\Host\\" + std::wstring(252, L'n')));
    EXPECT_FALSE(loads(L"C:\\Host\\" + std::wstring(1000, L'n')));
    EXPECT_FALSE(loads(L"C:\\" + std::wstring(300, L'f') + L"\\AIBridge.dll"));
}

TEST(AliyunWrap, BoundTable_IsNotChanged)
{
    FakeModules modules;
    int other = 0;
    AliyunWrapTable table;
    table.module = &other;
    bindAliyunWrap(table, modules.access());
    EXPECT_EQ(table.module, &other);
    EXPECT_TRUE(modules.loaded.empty());
}

#ifndef _WIN32
TEST(AliyunWrap, SystemBinding_OutsideWindows_LeavesTheTableEmpty)
{
    AliyunWrapTable table;
    bindAliyunWrap(table);
    EXPECT_TRUE(isEmpty(table));
}
#endif

} // namespace
