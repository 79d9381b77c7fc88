#pragma once

#include "closed/LLFProc/Firmware.h"

#include <QtCore/QString>

/// The calls, with @p root as a prefix of the kernel's path; empty for the running machine.
FirmwareCalls firmwareCallsOf(const QString& root);
