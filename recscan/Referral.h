#pragma once

#include "recscan/Recommendation.h"

#include <QtCore/QMap>
#include <QtCore/QString>

#include <optional>

/// Steps of the referral rule: number, page address, function key, sentence. All of them block. Scan thread.

/// Value of a missing number and of a missing address.
extern const QString kNoReferral;

/// The installation's referral number: kNoReferral if the value is missing or malformed, empty if its digits
/// are missing.
QString readReferralNumber();

/// Requests the page address of a number from the referral service. Has no timeout of its own: it waits as
/// long as the connection stays open. Returns kNoReferral on any failure.
QString fetchSeoPage(const QString& id);

/// Adds the entries of the file "seo2fun.json" in the current directory to @p urlToFun: page address to
/// function key. A missing or malformed file adds nothing.
void loadSeoToFun(QMap<QString, QString>& urlToFun);

/// The recommendation of a function; empty if neither table contains the key.
std::optional<Recommendation> recommendFunction(const QString& key);
