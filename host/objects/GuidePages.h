#pragma once

#include "host/machine/Machine.h"
#include "host/machine/Text.h"

#include <QtCore/QStringList>
#include <QtCore/QVariantList>
#include <QtCore/QVariantMap>

namespace host {

/// What the window shows of a guide or of a page that covers it, under the title, in the language of the
/// window.
struct GuidePage
{
    QString text;
    QStringList steps;
    int step = 0;       ///< the current one, counted from 0
    QVariantList facts; ///< maps with `name` and `value`
    QString objection;  ///< what speaks against the work, empty if nothing
    bool isDialog = false;
};

/// The page for the map of sigCloneResult: at its step, with its objection.
GuidePage clonePage(const QVariantMap& result);
/// The page for the map of sigConvertResult; @p objection as conversionObjection() has it.
GuidePage convertPage(const QVariantMap& task, const Text& objection);
/// The search for lost partitions.
Text recoveryTitle(const QVariantMap& task);
GuidePage recoveryPage(const QVariantMap& task);
Text mediaTitle(const QVariantMap& task);
GuidePage mediaPage(const QVariantMap& task);
GuidePage healthPage(const Machine& machine, int diskIndex);
/// @p name: as toolboxName() has it.
GuidePage toolboxPage(const QString& name, const QVariantMap& record);

/// A record's words and sizes: "drive D (NTFS, Data, 300 GB, 120 GB used)".
QString recordText(const QVariantMap& record);

} // namespace host
