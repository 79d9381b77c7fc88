#include "tests/windows/Wine.h"

#include <windows.h>

bool runsUnderWine()
{
    return GetProcAddress(GetModuleHandleW(L"ntdll"), "wine_get_version") != nullptr;
}
