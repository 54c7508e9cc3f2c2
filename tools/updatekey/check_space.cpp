// Room on the flash disk. The update stages both trees while the installed ones and the backups of
// the update before are still there; a file for which there is no room is lost without a word.

#include "support/file_util.h"
#include "tools/updatekey/check.h"

namespace {

constexpr uint64_t CLUSTER = 4096;

uint64_t onDisk(uint64_t size) {
    return (size + CLUSTER - 1) / CLUSTER * CLUSTER;
}

std::string shown(uint64_t bytes) {
    return sizeText(static_cast<int64_t>(bytes));
}

}  // namespace

void checkSpace(const KeyUnderCheck& key, CheckReport& report) {
    uint64_t staged = 0;
    for (const KeyEntry& entry : key.tree)
        if (report.prediction.copied.count(entry.path) != 0)
            staged += onDisk(entry.size);
    // The installed trees and the backups are taken to be as large as the key's.
    constexpr uint64_t copiesAtOnce = 3;
    report.flashNeeded = copiesAtOnce * staged;
    if (!key.options.flashSize)
        return;
    const uint64_t flash = *key.options.flashSize;
    if (staged > flash)
        addError(report.findings, "flash-too-small", "",
                 "the key alone takes " + shown(staged) + " of a flash disk of " + shown(flash));
    else if (report.flashNeeded > flash)
        addWarning(report.findings, "flash-tight", "",
                   "with the installed trees and their backups of the same size, " +
                       shown(report.flashNeeded) + " are needed at once on a flash disk of " +
                       shown(flash));
}
