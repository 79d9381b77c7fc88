// A library that loads and has no factory.
#include <QtCore/qglobal.h>

extern "C" Q_DECL_EXPORT int notAFactory()
{
    return 1;
}
