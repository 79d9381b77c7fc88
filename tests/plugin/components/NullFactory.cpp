// A library whose factory returns null.
#include <QtCore/qglobal.h>

#include <cstdio>

extern "C" Q_DECL_EXPORT void* getInstance()
{
    std::puts("factory called");
    return nullptr;
}
