// A library whose factory gives nothing.
#include <QtCore/qglobal.h>

#include <cstdio>

extern "C" Q_DECL_EXPORT void* getInstance()
{
    std::puts("asked for nothing");
    return nullptr;
}
