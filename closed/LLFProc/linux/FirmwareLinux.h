#pragma once

#include "closed/LLFProc/Firmware.h"

#include <QtCore/QString>

/// The calls, with @p root in front of the kernel's path; empty for the running machine.
FirmwareCalls firmwareCallsOf(const QString& root);
