// A component's library that needs another library of the product.
#include <QtCore/qglobal.h>

Q_DECL_IMPORT int neededFunction();

extern "C" Q_DECL_EXPORT void* getInstance()
{
    neededFunction();
    return nullptr;
}
