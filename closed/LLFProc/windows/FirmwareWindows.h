#pragma once

#include "closed/LLFProc/Firmware.h"

#include <windows.h>

/// The calls, with the one for the type looked up in @p module, which must stay loaded.
FirmwareCalls firmwareCallsOf(HMODULE module);
