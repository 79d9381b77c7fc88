#include "host/objects/HostStatus.h"

namespace host {

HostStatus::HostStatus(bool busy, bool popuped) : alwaysBusy_(busy), busy_(busy), popuped_(popuped) {}

Rejection HostStatus::closingRejection() const
{
    return rejectIf(isClosing(), QT_TRANSLATE_NOOP("Sandbox", "The host is closing."));
}

} // namespace host
