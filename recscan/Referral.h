#pragma once

#include "recscan/Recommendation.h"

#include <QtCore/QMap>
#include <QtCore/QString>

#include <optional>

/// The steps of the referral rule: number, page address, function key, sentence. Blocking; scan thread.

/// Stands for "none" as a number and as an address.
extern const QString kNoReferral;

/// The installation's referral number, kNoReferral if it has none; empty if it is there without digits.
QString readReferralNumber();

/// Asks the referral service for the page address of a number. Waits as long as the network keeps the
/// connection open; any failure gives kNoReferral.
QString fetchSeoPage(const QString& id);

/// Adds the file "seo2fun.json" of the current directory: page address to function key. Adds nothing if the
/// file is missing or something else.
void loadSeoToFun(QMap<QString, QString>& urlToFun);

/// The recommendation of a function, empty for a key that is in neither table.
std::optional<Recommendation> recommendFunction(const QString& key);
