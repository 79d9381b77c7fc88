#include "host/objects/Assistance.h"

namespace host {

namespace {

// Qt's own value for all lists.
constexpr int kUsualHeight = 320;
// Some hundred lines of the log, or fifty disks.
constexpr int kReadHeight = 5000;

} // namespace

Assistance::Assistance() : active_(QAccessible::isActive())
{
    QAccessible::installActivationObserver(this);
}

Assistance::~Assistance()
{
    QAccessible::removeActivationObserver(this);
}

int Assistance::extraHeight() const
{
    return active_ ? kReadHeight : kUsualHeight;
}

void Assistance::accessibilityActiveChanged(bool active)
{
    if (active_ == active)
        return;
    active_ = active;
    Q_EMIT activeChanged();
}

} // namespace host
