// Fuzzes the reader of release notes: version and lines must not be longer than the file.

#include <cstdlib>

#include "tests/fuzz/fuzz_device.h"
#include "update/updater.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    static const FuzzDevice DEVICE;
    DEVICE.write("USB HD/VELD/KSTRL/a", data, 0);
    DEVICE.write("USB HD/VELD/ORBUI/data/b", data, 0);
    DEVICE.write("USB HD/VELD/kstrXReleaseNotes.txt", data, size);
    Updater updater;
    updater.pollMedia();
    std::size_t shown = 0;
    for (const std::string& line : updater.getMessageLines())
        shown += line.size() + 1;
    if (!updater.isMediaReady() || shown > size || updater.getUpdateVersion().size() > size)
        std::abort();
    return 0;
}
