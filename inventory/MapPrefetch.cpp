#include "inventory/MapPrefetch.h"

#include <QtCore/QVariantMap>

#include <array>
#include <utility>

void MapPrefetch::readFrom(int first) const
{
    using Walk = std::pair<QVariantMap::const_iterator, QVariantMap::const_iterator>;
    std::array<Walk, kTogether> walks;
    std::size_t count = 0;
    for (int i = first; i < maps_.size() && count < walks.size(); ++i) {
        if (maps_.at(i).userType() == QMetaType::QVariantMap) {
            const auto& map = *static_cast<const QVariantMap*>(maps_.at(i).constData());
            walks[count++] = {map.begin(), map.end()};
        }
    }
    for (bool more = count > 0; more;) {
        more = false;
        for (std::size_t i = 0; i < count; ++i) {
            if (walks[i].first != walks[i].second)
                more = ++walks[i].first != walks[i].second || more;
        }
    }
}
