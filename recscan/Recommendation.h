#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariantMap>

/// Result of a scan: the record for the host and the action to perform if the user accepts.
struct Recommendation
{
    QVariantMap record;        ///< msg, buttons, default, time, and the keys of its kind
    int actionIndex = -1;      ///< number of the action of a case
    QVariantMap actionParams;  ///< target of the action: diskIndex or driveLetter
    bool fromReferral = false; ///< funKey selects the action instead
    QString funKey;            ///< empty if the agent does the work
};

/// Builds the record of a translated message. @p buttons holds translated labels, and the first one is the
/// default. The time of the record is the current time.
QVariantMap makeRecord(const QString& message, const QStringList& buttons);

/// makeRecord with the usual buttons, accept and refuse.
QVariantMap makePlainRecord(const QString& message);
