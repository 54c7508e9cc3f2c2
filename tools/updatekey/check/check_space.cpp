// Checks the space on the flash disk. The update stages new folders while the installed ones and
// the old backups still exist; a file that does not fit is lost without a message.

#include "tools/updatekey/check/checks.h"

namespace {

std::string shown(uint64_t bytes) {
    return std::to_string(bytes) + " bytes";
}

}  // namespace

void checkSpace(KeyUnderCheck& key) {
    uint64_t staged = 0;
    for (const TreeEntry& entry : key.tree)
        if (key.report.prediction.copied.count(entry.path) != 0)
            staged += sizeOnFlash(entry.size);
    // The installed folders and the backups are assumed to be as large as the key's.
    const uint64_t installed = key.options.installedSize.value_or(2 * staged);
    key.report.flashNeeded = staged + installed;
    if (!key.options.flashSize)
        return;
    const uint64_t flash = *key.options.flashSize;
    const std::string ofDisk = " of a flash disk of " + shown(flash);
    if (staged > flash)
        key.add("flash-too-small", "",
                "the key alone takes " + shown(staged) + ofDisk + "; make the key smaller");
    else if (key.report.flashNeeded > flash && key.options.installedSize)
        key.add("flash-too-small", "",
                "the key takes " + shown(staged) + " and the files on the device " +
                    shown(installed) + ofDisk + "; delete some of them first");
    else if (key.report.flashNeeded > flash)
        key.add("flash-tight", "",
                "if the installed folders and their backups are as large as the key's, the "
                "update takes " +
                    shown(key.report.flashNeeded) + ofDisk + "; rehearse it with a real device");
}
