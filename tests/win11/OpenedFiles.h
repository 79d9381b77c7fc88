#pragma once

#include <QtCore/QStringList>
#include <QtCore/private/qabstractfileengine_p.h>

#include <algorithm>

/// The paths for which a QFile asks the file system during the life of this object, by an open or a test
/// for existence; one thread at a time.
class OpenedFiles : public QAbstractFileEngineHandler
{
public:
    QAbstractFileEngine* create(const QString& path) const override
    {
        paths_ << path;
        // The system's own engine does the work.
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
