#pragma once

#include "closed/ClosedExport.h"

/// True if this machine can start by UEFI. Any thread.
AIBRIDGE_CLOSED_EXPORT bool MayBeSupportUEFI();
