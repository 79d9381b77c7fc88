#include "host/backend/Confirmation.h"

#include <algorithm>
#include <tuple>

namespace host {

namespace {

bool isSame(const Partition& one, const Partition& other)
{
    const auto values = [](const Partition& entry) {
        return std::tie(entry.startSector, entry.size, entry.usedSize, entry.partGUID, entry.driveLetter,
                        entry.label, entry.fsString);
    };
    return values(one) == values(other);
}

} // namespace

bool isSameQuestion(const Confirmation& one, const Confirmation& other)
{
    const auto& first = one.loss.partitions;
    const auto& second = other.loss.partitions;
    return one.loss.operation == other.loss.operation && one.device == other.device &&
           one.model == other.model && one.size == other.size &&
           std::equal(first.begin(), first.end(), second.begin(), second.end(), isSame);
}

} // namespace host
