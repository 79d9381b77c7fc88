// The library that the fixture Dependent needs. Tests leave it out.
#include <QtCore/qglobal.h>

Q_DECL_EXPORT int neededFunction()
{
    return 1;
}
