// A library without a factory.
#include <QtCore/qglobal.h>

extern "C" Q_DECL_EXPORT int notAFactory()
{
    return 1;
}
