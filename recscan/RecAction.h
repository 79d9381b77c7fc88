#pragma once

#include <QtCore/QString>
#include <QtCore/QVariantMap>

class HostPages;
class QByteArray;
class ZORNativePluginIf;

/// The actions of accepted recommendations. All are called on the application thread; the tools' answers are discarded.

/// Calls the tool of a referral function. An unknown key has no effect.
void runReferralAction(ZORNativePluginIf& tools, const QByteArray& funKey);

/// Carries out an answer of the Windows 11 case, or of the host's Windows 11 page: opens the configured address, or
/// converts a disk. @p actionParams holds the disk of the recommendation; an answer of the page means the boot disk.
void runWin11Action(ZORNativePluginIf& tools, const HostPages* pages, const QVariantMap& answer,
                    const QVariantMap& actionParams);

/// True if @p answer comes from the host's Windows 11 page.
bool isCalledByWin11Checker(const QVariantMap& answer);

/// Asks the host's window to open an address, which can be empty. Returns the host's answer; false without a window or
/// method. Any thread; waits for the application thread.
bool openUrlOnHost(const QString& url);
