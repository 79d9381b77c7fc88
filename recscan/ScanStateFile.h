#pragma once

#include <QtCore/QtGlobal>

/// State of the scan that is kept from one launch to the next.
struct ScanState
{
    qint32 nextCaseIndex = 0;  ///< the first case that has not been tried yet
    bool referralDone = false; ///< the referral rule has run; it runs only once
};

/// Reads "recscan.info" from the application's folder: the index as four bytes in big-endian order and the
/// flag as one byte. Missing bytes read as 0 and false. The property "recscanFolder" of the application
/// object names another folder; a host sets it before it loads the component.
ScanState readScanState();

/// Replaces that file. Write errors are ignored. If the process dies during the write, the file is old, empty
/// or new.
void writeScanState(const ScanState& state);
