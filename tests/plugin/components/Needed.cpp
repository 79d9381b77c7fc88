// The dependency of the fixture Dependent, which tests omit.
#include <QtCore/qglobal.h>

Q_DECL_EXPORT int neededFunction()
{
    return 1;
}
