#pragma once

#include "closed/ClosedExport.h"

#include <QtCore/QString>

/// The product's remote configuration. Any thread.
class AIBRIDGE_CLOSED_EXPORT UIUtility
{
public:
    static UIUtility* instance();

    /// The string configured for @p key, or @p defaultText.
    QString GetFireBaseConfigString(const QString& key, const QString& defaultText);

private:
    UIUtility() = default;
};
