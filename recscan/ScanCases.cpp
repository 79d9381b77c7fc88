#include "recscan/ScanCases.h"

#include <array>

namespace {

using Case = std::optional<Recommendation> (*)(const ScanSubject&);

const std::array<Case, kCaseCount> kCases = {
    checkWin10EndOfSupport, checkDiskSmart,          checkSystemDriveSpace, checkDriveSpace,
    checkWastedMbrSpace,    checkLargeFat32External, checkBootEntries,      check4kAlignment,
    checkBitLockerUsb,      checkSlowBootDisk,       checkRawPartition,     checkBitLockerLocked};

} // namespace

std::optional<Recommendation> runScanCase(int index, const ScanSubject& subject)
{
    return index >= 0 && index < kCaseCount ? kCases[static_cast<std::size_t>(index)](subject) : std::nullopt;
}
