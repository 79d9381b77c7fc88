#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariantMap>

/// What a scan found: the record for the host, and what carries it out if the user accepts.
struct Recommendation
{
    QVariantMap record;        ///< msg, buttons, default, time, and keys of its kind
    int actionIndex = -1;      ///< which action of a case
    QVariantMap actionParams;  ///< its target: diskIndex or driveLetter
    bool fromReferral = false; ///< the action goes by funKey instead
    QString funKey;            ///< empty where the work is left to the agent
};

/// The record of a translated text: the first of @p buttons, translated labels, is the default, and the time
/// is now.
QVariantMap makeRecord(const QString& message, const QStringList& buttons);

/// makeRecord with the usual buttons, which accept and refuse.
QVariantMap makePlainRecord(const QString& message);
