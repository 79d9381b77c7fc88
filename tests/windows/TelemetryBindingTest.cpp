// The closed telemetry library, loaded from the module's folder with the system's functions.
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
    // Copies a stand-in under the library's name to a scratch folder, and binds a table as for a module in
    // that folder.
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

TEST(ModuleFile, IsTheFileThatContainsTheBinding)
{
    EXPECT_EQ(QDir::fromNativeSeparators(QString::fromStdWString(ModuleAccess::system().moduleFileName())),
              QCoreApplication::applicationFilePath());
}

TEST_F(TelemetryBinding, CompleteLibrary_FillsTheTableInOrder)
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
    const AliyunWrapTable* table = bind(QStringLiteral("AliyunWrapComplete.dll"));
    ASSERT_NE(table->module, nullptr);
    ASSERT_EQ(table->entryPoints.size(), std::size(names));
    for (std::size_t i = 0; i < std::size(names); ++i) {
        void* const expected =
            reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(table->module), names[i]));
        EXPECT_NE(expected, nullptr) << names[i];
        EXPECT_EQ(table->entryPoints[i], expected) << names[i];
    }
}

TEST_F(TelemetryBinding, LibraryWithMissingEntryPoints_LeavesOnlyThoseNull)
{
    const AliyunWrapTable* table = bind(QStringLiteral("AliyunWrapGaps.dll"));
    ASSERT_NE(table->module, nullptr);
    for (std::size_t i = 0; i < table->entryPoints.size(); ++i)
        EXPECT_EQ(table->entryPoints[i] == nullptr, i == 12 || i == 15) << i;
}

TEST_F(TelemetryBinding, MissingLibrary_LeavesTheTableEmpty)
{
    const AliyunWrapTable* table = bind(QString());
    EXPECT_EQ(table->module, nullptr);
    for (const void* entry : table->entryPoints)
        EXPECT_EQ(entry, nullptr);
}

TEST_F(TelemetryBinding, FileThatIsNotALibrary_LeavesTheTableEmpty)
{
    QFile file(folder_.filePath(kLibrary));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("not a library");
    file.close();
    // Otherwise Windows shows a dialog about such a file and waits.
    SetErrorMode(SEM_FAILCRITICALERRORS);
    EXPECT_EQ(bind(QString())->module, nullptr);
}

// The real module, loaded from a folder other than the host's.
TEST_F(TelemetryBinding, Component_LoadsTheLibraryFromItsOwnFolder)
{
    const QString built = qEnvironmentVariable("AIBRIDGE_BUILD_DIR") + QStringLiteral("/bin/");
    for (const char* name : {"AIBridge.dll", "libZorLog.dll", "libUIUtility.dll", "libLLFProc.dll"}) {
        const QString file = QString::fromLatin1(name);
        ASSERT_TRUE(QFile::copy(built + file, folder_.filePath(file))) << name;
    }
    ASSERT_TRUE(QFile::copy(ownFile(QStringLiteral("AliyunWrapComplete.dll")), folder_.filePath(kLibrary)));
    ASSERT_EQ(GetModuleHandleW(L"AliyunWrap.DLL"), nullptr);
    const QString path = QDir::toNativeSeparators(folder_.filePath(QStringLiteral("AIBridge.dll")));
    const HMODULE component =
        LoadLibraryExW(path.toStdWString().c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    ASSERT_NE(component, nullptr) << GetLastError();
    EXPECT_EQ(loadedFrom(L"AliyunWrap.DLL").toLower(),
              QDir::fromNativeSeparators(folder_.filePath(kLibrary)).toLower());
}

} // namespace
