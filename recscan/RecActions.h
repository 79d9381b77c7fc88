#pragma once

class CZorHandle;
class QByteArray;

/// The actions of accepted recommendations, by number. A case's action has the number of the case, but for
/// the system drive's: it shares ActionSmartLayout with the case after it when room is on the same disk.
enum RecActionIndex : int {
    ActionWin10EndOfSupport = 0,
    ActionDiskHealth = 1,
    ActionMigrateData = 2,
    ActionSmartLayout = 3,
    ActionConvertToGpt = 4,
    ActionConvertToExfat = 5,
    ActionRepairBoot = 6,
    ActionAlign4k = 7,
    ActionCreateUsb = 8,
    ActionNone = 9,
    ActionRepairRaw = 10,
    ActionFindBitLockerKey = 11
};

/// What the Windows 11 check came to, as the record tells the host and the host tells us back.
enum Win11CheckResult : int { Win11Ready = 0, Win11NeedsGpt = 1, Win11NotReady = 2 };

/// Calls the tool that a referral function stands for; nothing for a key that is none. Application thread.
void runReferralAction(CZorHandle& tools, const QByteArray& funKey);
