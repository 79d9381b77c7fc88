#include "host/RealDisks.h"

namespace host {

std::variant<std::unique_ptr<Backend>, QString> openRealDisks(const QStringList&, const QStringList&)
{
    return QStringLiteral("disks and disk images need UDisks2, which exists on Linux only");
}

} // namespace host
