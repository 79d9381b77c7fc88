#pragma once

#include "tests/faults/Fault.h"
#include "tests/support/RecordingHost.h"

#include <QtCore/QVariantList>
#include <QtCore/QVariantMap>

#include <functional>
#include <string>
#include <vector>

/// A recommendation scan and the user's answer to it, on a machine where one case fires.
///
/// Its outcome is one line: the members that the scan calls, the first nine words of the recommendation, and
/// the members that the accepted answer reaches, separated by " | ". A conversion is shown as
/// "sigConvertResult:<funIdx>:<diskIndex of the record>/<number of its keys>".
struct Journey
{
    const char* name;
    int firstCase;
    QVariantList machine;
    std::function<void(RecordingHost&)> prepare;
    QVariantMap answer;
    QString whole; ///< the outcome on a host without a fault
};

const std::vector<Journey>& scanJourneys();

/// Runs the journey on a host with that fault. Application thread.
QString outcomeOf(const Journey& journey, const FaultCase& row);

/// The outcomes of further uses of the host: the check of a conversion for funIdx 0 to 2; a clone that the
/// page rejects and a partition recovery, where the tools' answers hide what becomes of the calls; a change
/// of the language after a component has loaded.
QString conversionCheckOutcome(const FaultCase& row);
QString pageCallsOutcome(const FaultCase& row);
QString languageOutcome(const FaultCase& row);
extern const char* const kConversionCheck;
extern const char* const kPageCalls;
extern const char* const kLanguage;

/// The documented outcome: @p whole, changed as the fault requires.
QString expectedOutcome(const std::string& journey, const QString& whole, const FaultCase& row);

/// True if the outcome depends on the member, or on a member of the object, that is broken in @p row.
bool reaches(const std::string& journey, const QString& whole, const FaultCase& row);
