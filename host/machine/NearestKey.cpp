#include "host/machine/NearestKey.h"

#include <algorithm>
#include <numeric>
#include <vector>

namespace host {

namespace {

// Levenshtein distance.
int editDistance(const QString& left, const QString& right)
{
    std::vector<int> row(static_cast<std::size_t>(right.size()) + 1);
    std::iota(row.begin(), row.end(), 0);
    for (int i = 0; i < left.size(); ++i) {
        int diagonal = row[0]++;
        for (std::size_t j = 1; j < row.size(); ++j) {
            const int replaced = diagonal + (left.at(i) == right.at(static_cast<int>(j) - 1) ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({replaced, row[j] + 1, row[j - 1] + 1});
        }
    }
    return row.back();
}

} // namespace

QString nearestKey(const QString& name, const QStringList& keys)
{
    QString nearest;
    int smallest = name.size() + 1;
    for (const QString& key : keys) {
        // A difference in length is a lower bound, which skips the table for a very long name.
        const int longer = std::max(name.size(), key.size());
        if (3 * (longer - std::min(name.size(), key.size())) > longer + 2)
            continue;
        const int distance = editDistance(name.toLower(), key.toLower());
        if (3 * distance > longer + 2 || distance >= smallest)
            continue;
        smallest = distance;
        nearest = key;
    }
    return nearest;
}

} // namespace host
