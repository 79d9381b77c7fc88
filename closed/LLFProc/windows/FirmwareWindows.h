#pragma once

#include "closed/LLFProc/Firmware.h"

#include <windows.h>

/// The calls. The one for the firmware type is resolved in @p module, which must stay loaded.
FirmwareCalls firmwareCallsOf(HMODULE module);
