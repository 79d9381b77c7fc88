#pragma once

#include <QtCore/QString>
#include <QtCore/QVector>

#include <optional>

namespace host {

/// How fast the simulated machine works. A task takes a fixed time, and the time in which its bytes are moved
/// at 4 GiB a second; both are divided by the factor.
struct Pace
{
    bool instant = false; ///< every task takes no time
    double factor = 1;    ///< above 0

    /// @p fixed: milliseconds.
    qint64 milliseconds(qint64 fixed, qint64 bytes) const;
};

/// A factor above 0, or "instant"; none for another text.
std::optional<Pace> readPace(const QString& text);

/// A task that is to fail: the next one of that function, after that share of its work, 0 to 1.
struct PlannedFailure
{
    int function;
    double share;
};

/// "FormatPartition after 40%"; none for a text of another form, or with a name or a share that there is not.
std::optional<PlannedFailure> readFailure(const QString& text);

} // namespace host
