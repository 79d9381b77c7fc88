#pragma once

#include "host/backend/Backend.h"
#include "host/machine/Conversions.h"
#include "host/machine/GuidedTasks.h"
#include "host/machine/Machine.h"

#include <QtCore/QStringList>
#include <QtCore/QVariantList>
#include <QtCore/QVariantMap>

#include <functional>
#include <memory>
#include <optional>

namespace host {

/// The content of a guide, in the language of the window.
struct GuidePage
{
    QString text;
    QStringList steps;
    int step = 0;          ///< the current step, counted from 0
    QVariantList facts;    ///< maps with `name` and `value`
    QString rejection;     ///< why the work cannot be started; empty if it can
    bool isDialog = false; ///< covers the window
};

/// A guide that a tool opens.
struct Guide
{
    Text title;
    Text summary; ///< for the log and the transcript; shown only without a page
    std::optional<GuidedWork> work = std::nullopt; ///< empty if the guide only informs
    std::function<GuidePage()> page = nullptr;     ///< called again after a change of the language
};

/// @p result: the map of sigCloneResult.
Guide cloneGuide(const QVariantMap& result);
/// @p task: the map of sigConvertResult.
Guide convertGuide(const Backend& backend, const QVariantMap& task);

/// Whether the back end accepts a conversion now. Rejects an empty @p conversion.
Rejection conversionRejection(const Backend& backend, std::optional<Conversion> conversion,
                              const QVariantMap& record);
Guide recoveryGuide(const QVariantMap& task);
Guide mediaGuide(const QVariantMap& task);
Guide healthGuide(const std::shared_ptr<const Machine>& machine, int diskIndex);
Guide toolboxGuide(int index, const QVariantMap& record);

} // namespace host
