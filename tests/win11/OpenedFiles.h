#pragma once

#include <QtCore/QStringList>
#include <QtCore/private/qabstractfileengine_p.h>

#include <algorithm>

/// The paths that a QFile opens, or tests for existence, during the lifetime of this object. One thread at
/// a time.
class OpenedFiles : public QAbstractFileEngineHandler
{
public:
    QAbstractFileEngine* create(const QString& path) const override
    {
        paths_ << path;
        // The engine of the system performs the operation.
        return nullptr;
    }
    /// How many of them end in @p tail.
    int count(const QString& tail) const
    {
        return static_cast<int>(
            std::count_if(paths_.begin(), paths_.end(), [&](const QString& p) { return p.endsWith(tail); }));
    }

private:
    mutable QStringList paths_;
};
