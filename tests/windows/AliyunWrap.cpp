// A stand-in for the closed telemetry library with its undecorated entry points, which must not be called.
// With STANDIN_GAPS two are missing.
#include <cstdlib>

#define ENTRY(name)                                                                                          \
    extern "C" __declspec(dllexport) void name()                                                             \
    {                                                                                                        \
        std::abort();                                                                                        \
    }

ENTRY(AliyunOpenSession)
ENTRY(AliyunCloseSession)
ENTRY(AliyunAddParamToSessionA)
ENTRY(AliyunAddParamToSessionW)
ENTRY(AliyunSendInfo)
ENTRY(AliyunEnableUserInfoCollect)
ENTRY(AliyunInstallConfigFilePath)
ENTRY(AliyunInstallInitUid)
ENTRY(AliyunUninstallStart)
ENTRY(AliyunUninstallEnd)
ENTRY(AliyunIsEnableUserInfoCollect)
ENTRY(AliyunEndCache)
#ifndef STANDIN_GAPS
ENTRY(AliyunGetUserUid)
#endif
ENTRY(AliyunStopProcess)
ENTRY(AliyunGetKeyValue)
#ifndef STANDIN_GAPS
ENTRY(AliyunSetKeyValue)
#endif
