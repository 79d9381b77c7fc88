#include "host/backend/Backend.h"

#include <utility>

namespace host {

Backend::Backend(Machine machine) : machine_(std::make_shared<const Machine>(std::move(machine))) {}

std::shared_ptr<const Machine> Backend::machine() const
{
    const std::lock_guard<std::mutex> lock(mutex_);
    return machine_;
}

std::optional<Confirmation> Backend::confirmation(int, const QVariantMap&) const
{
    return std::nullopt;
}

void Backend::change(Machine machine)
{
    auto next = std::make_shared<const Machine>(std::move(machine));
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        machine_.swap(next);
    }
    Q_EMIT machineChanged();
}

std::vector<Text> Backend::takeNotices()
{
    return std::exchange(notices_, {});
}

void Backend::addNotice(const Text& notice)
{
    notices_.push_back(notice);
    Q_EMIT noticed();
}

} // namespace host
