#pragma once

#include <QtCore/QString>
#include <QtCore/QVector>

#include <optional>

namespace host {

/// The speed of the simulated machine. A task takes a fixed time, and the time to move its bytes at 4 GiB per
/// second; both are divided by the factor.
struct Pace
{
    bool instant = false; ///< every task takes no time
    double factor = 1;    ///< above 0

    /// @p fixed: milliseconds.
    qint64 milliseconds(qint64 fixed, qint64 bytes) const;
};

/// Reads a factor above 0 or "instant"; empty if invalid.
std::optional<Pace> readPace(const QString& text);

/// Makes the next task of a function fail after that share of its work, 0 to 1.
struct PlannedFailure
{
    int function;
    double share;
};

/// Reads "FormatPartition after 40%"; empty if the form, the name or the share is invalid.
std::optional<PlannedFailure> readFailure(const QString& text);
/// The name in a text of that form if no task has it; otherwise empty.
QString unknownTask(const QString& text);

} // namespace host
