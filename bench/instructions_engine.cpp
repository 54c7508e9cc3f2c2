// The engine's own work per file: listing, copying and deleting, without the work of the kernel.

#include <filesystem>

#include "bench/bench_device.h"
#include "bench/instructions.h"
#include "support/logger.h"
#include "update/updater.h"

namespace {

constexpr std::size_t FILE_COUNT = 1000;

// Makes the protected steps of an update callable.
class OpenUpdater : public Updater {
  public:
    bool hasFilesToCopy() const { return !filesToCopy.empty(); }
};

}  // namespace

void countEngine() {
    const BenchDevice device;
    device.makeKey(FILE_COUNT, 1024, 1);
    const std::filesystem::path flash = device.root() / "FlashDisk/VELD";
    std::filesystem::create_directories(flash);
    for (const char* const folder : {"KSTRL", "ORBUI"})
        for (const char* const suffix : {"", "_old"})
            std::filesystem::copy(device.root() / "USB HD/VELD" / folder,
                                  flash / (std::string(folder) + suffix),
                                  std::filesystem::copy_options::recursive);
    Logger::instance().setPath("/FlashDisk/VELD/Updater-log.txt");

    OpenUpdater updater;
    countInstructions("engine: look for a key", [&] {
        updater.pollMedia();
        return 1U;
    });
    countInstructions("engine: list, per file", [&] {
        updater.startUpdate();
        return FILE_COUNT;
    });
    countInstructions("engine: copy, per file", [&] {
        while (updater.hasFilesToCopy())
            updater.step();
        return FILE_COUNT;
    });
    countInstructions("engine: delete the backup and swap, per file", [&] {
        updater.step();
        return FILE_COUNT;
    });
}
