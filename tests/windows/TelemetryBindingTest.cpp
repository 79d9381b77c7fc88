// The closed telemetry library, found beside the module by the system's own calls.
#include "telemetry/AliyunWrap.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <windows.h>

namespace {

const QString kLibrary = QStringLiteral("AliyunWrap.DLL");

QString ownFile(const QString& name)
{
    return QCoreApplication::applicationDirPath() + QLatin1Char('/') + name;
}

QString loadedFrom(const wchar_t* module)
{
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(GetModuleHandleW(module), path, MAX_PATH);
    return QDir::fromNativeSeparators(QString::fromWCharArray(path));
}

class TelemetryBinding : public testing::Test
{
protected:
    // Puts a stand-in under the library's name into a scratch folder and binds a table as a module there
    // would.
    AliyunWrapTable* bind(const QString& standIn)
    {
        if (!standIn.isEmpty()) {
            EXPECT_TRUE(QFile::copy(ownFile(standIn), folder_.filePath(kLibrary)));
        }
        ModuleAccess access = ModuleAccess::system();
        const QString module = QDir::toNativeSeparators(folder_.filePath(QStringLiteral("AIBridge.dll")));
        access.moduleFileName = [module] { return module.toStdWString(); };
        bindAliyunWrap(table_, access);
        return &table_;
    }

    QTemporaryDir folder_;
    AliyunWrapTable table_;
};

TEST(ModuleFile, IsTheFileThatHoldsTheBinding)
{
    EXPECT_EQ(QDir::fromNativeSeparators(QString::fromStdWString(ModuleAccess::system().moduleFileName())),
              QCoreApplication::applicationFilePath());
}

TEST_F(TelemetryBinding, WholeLibrary_FillsTheTableInItsOrder)
{
    const char* const names[] = {"AliyunOpenSession",
                                 "AliyunCloseSession",
                                 "AliyunAddParamToSessionA",
                                 "AliyunAddParamToSessionW",
                                 "AliyunSendInfo",
                                 "AliyunEnableUserInfoCollect",
                                 "AliyunInstallConfigFilePath",
                                 "AliyunInstallInitUid",
                                 "AliyunUninstallStart",
                                 "AliyunUninstallEnd",
                                 "AliyunIsEnableUserInfoCollect",
                                 "AliyunEndCache",
                                 "AliyunGetUserUid",
                                 "AliyunStopProcess",
                                 "AliyunGetKeyValue",
                                 "AliyunSetKeyValue"};
    const AliyunWrapTable* table = bind(QStringLiteral("AliyunWrapWhole.dll"));
    ASSERT_NE(table->module, nullptr);
    ASSERT_EQ(table->entryPoints.size(), std::size(names));
    for (std::size_t i = 0; i < std::size(names); ++i) {
        void* const expected =
            reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(table->module), names[i]));
        EXPECT_NE(expected, nullptr) << names[i];
        EXPECT_EQ(table->entryPoints[i], expected) << names[i];
    }
}

TEST_F(TelemetryBinding, LibraryWithGaps_LeavesThoseAloneNull)
{
    const AliyunWrapTable* table = bind(QStringLiteral("AliyunWrapGaps.dll"));
    ASSERT_NE(table->module, nullptr);
    for (std::size_t i = 0; i < table->entryPoints.size(); ++i)
        EXPECT_EQ(table->entryPoints[i] == nullptr, i == 12 || i == 15) << i;
}

TEST_F(TelemetryBinding, NoLibraryBesideTheModule_LeavesTheTableEmpty)
{
    const AliyunWrapTable* table = bind(QString());
    EXPECT_EQ(table->module, nullptr);
    for (const void* entry : table->entryPoints)
        EXPECT_EQ(entry, nullptr);
}

TEST_F(TelemetryBinding, FileThatIsNoLibrary_LeavesTheTableEmpty)
{
    QFile file(folder_.filePath(kLibrary));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("not a library");
    file.close();
    // Windows would ask the user about such a file, and wait.
    SetErrorMode(SEM_FAILCRITICALERRORS);
    EXPECT_EQ(bind(QString())->module, nullptr);
}

// The module itself, as a host loads it from a folder that is not the host's own.
TEST_F(TelemetryBinding, Component_LoadsTheLibraryOfItsOwnFolderWhenItLoads)
{
    const QString built = qEnvironmentVariable("AIBRIDGE_BUILD_DIR") + QStringLiteral("/bin/");
    for (const char* name : {"AIBridge.dll", "libZorLog.dll", "libUIUtility.dll", "libLLFProc.dll"}) {
        const QString file = QString::fromLatin1(name);
        ASSERT_TRUE(QFile::copy(built + file, folder_.filePath(file))) << name;
    }
    ASSERT_TRUE(QFile::copy(ownFile(QStringLiteral("AliyunWrapWhole.dll")), folder_.filePath(kLibrary)));
    ASSERT_EQ(GetModuleHandleW(L"AliyunWrap.DLL"), nullptr);
    const QString path = QDir::toNativeSeparators(folder_.filePath(QStringLiteral("AIBridge.dll")));
    const HMODULE component =
        LoadLibraryExW(path.toStdWString().c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    ASSERT_NE(component, nullptr) << GetLastError();
    EXPECT_EQ(loadedFrom(L"AliyunWrap.DLL").toLower(),
              QDir::fromNativeSeparators(folder_.filePath(kLibrary)).toLower());
}

} // namespace
