#pragma once

#include <QtCore/QtGlobal>

/// What is remembered of the scan from one launch to the next.
struct ScanState
{
    qint32 nextCaseIndex = 0;  ///< the first case still to try
    bool referralDone = false; ///< the referral rule has had its one turn
};

/// Reads "recscan.info" beside the application: four bytes of the index, the highest first, and one byte of
/// the flag. What the file lacks reads as 0 and false.
ScanState readScanState();

/// Writes that file anew; a failure is silent. A process that dies meanwhile leaves the old file, an empty
/// one or the new one.
void writeScanState(const ScanState& state);
