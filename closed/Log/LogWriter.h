#pragma once

#include "closed/ClosedExport.h"

/// The product's log. Any thread.
class AIBRIDGE_CLOSED_EXPORT CLogWriter
{
public:
    /// Writes printf-style output. Does not append a line feed.
    static void Log(const char* format, ...) Q_ATTRIBUTE_FORMAT_PRINTF(1, 2);
};
