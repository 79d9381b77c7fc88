#include "closed/LLFProc/Firmware.h"

bool startedThroughUefi(const FirmwareCalls& calls)
{
    constexpr quint32 uefi = 2;
    constexpr quint32 invalidFunction = 1;
    if (!calls.type)
        return calls.variableError() != invalidFunction;
    quint32 type = 0;
    return calls.type(&type) && type == uefi;
}
