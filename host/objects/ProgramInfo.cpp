#include "host/objects/ProgramInfo.h"

namespace host {

QString ProgramInfo::version() const
{
    return QStringLiteral(ZORHOST_VERSION);
}

QString ProgramInfo::qtVersion() const
{
    return QLatin1String(qVersion());
}

QString ProgramInfo::thriftVersion() const
{
    return QStringLiteral(ZORHOST_THRIFT_VERSION);
}

} // namespace host
