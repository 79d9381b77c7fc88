#pragma once

#include <QtCore/qglobal.h>

#ifdef AIBRIDGE_CLOSED_BUILD
#define AIBRIDGE_CLOSED_EXPORT Q_DECL_EXPORT
#else
#define AIBRIDGE_CLOSED_EXPORT Q_DECL_IMPORT
#endif
