// A component library that depends on another library.
#include <QtCore/qglobal.h>

Q_DECL_IMPORT int neededFunction();

extern "C" Q_DECL_EXPORT void* getInstance()
{
    neededFunction();
    return nullptr;
}
