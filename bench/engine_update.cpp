// Updates the device folder once, without a window and without pauses between the steps. Prints the
// number of files, the seconds of the update, and the peaks of resident memory and heap in bytes.

#include <chrono>
#include <cstdio>

#include "bench/counted_heap.h"
#include "support/logger.h"
#include "update/updater.h"

namespace {

class CountedUpdater : public Updater {
  public:
    uint32_t files() const { return totalFiles; }
};

}  // namespace

int main() {
    Logger::instance().setPath("/FlashDisk/VELD/Updater-log.txt");
    const auto start = std::chrono::steady_clock::now();
    CountedUpdater updater;
    updater.pollMedia();
    updater.startUpdate();
    while (updater.getState() == Updating && updater.isMediaReady())
        updater.step();
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
    std::printf("%u %.6f %llu %llu\n", updater.files(), seconds.count(),
                static_cast<unsigned long long>(peakResidentBytes()),
                static_cast<unsigned long long>(heapCount().peakBytes));
    return updater.getState() == UpdateComplete ? 0 : 1;
}
