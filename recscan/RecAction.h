#pragma once

#include <QtCore/QString>
#include <QtCore/QVariantMap>

class HostPages;
class QByteArray;
class ZORNativePluginIf;

/// Actions of accepted recommendations. Application thread. The tools' answers are discarded.

/// Calls the tool of a referral function. An unknown key has no effect.
void runReferralAction(ZORNativePluginIf& tools, const QByteArray& funKey);

/// Performs the action for an answer to the Windows 11 case, or for a request of the host's Windows 11 page:
/// opens the configured address or converts a disk. @p actionParams holds the disk of the recommendation; a
/// request of the page uses the boot disk. @p pages is not owned.
void runWin11Action(ZORNativePluginIf& tools, const HostPages* pages, const QVariantMap& answer,
                    const QVariantMap& actionParams);

/// True if @p answer comes from the host's Windows 11 page.
bool isCalledByWin11Checker(const QVariantMap& answer);

/// Asks the host's window to open an address, which can be empty. Returns the host's answer; false if the
/// window or its method is missing. Any thread; waits for the application thread.
bool openUrlOnHost(const QString& url);
