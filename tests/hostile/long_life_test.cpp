// Tests that an updater which waits for hours does not grow.

#include <fstream>

#include "platform/posix/call_hook.h"
#include "tests/helpers/update_on_device.h"
#include "ui/simple_ui.h"

namespace fs = std::filesystem;

namespace {

// Resident pages of this process.
std::size_t residentPages() {
    std::ifstream file("/proc/self/statm");
    std::size_t total = 0;
    std::size_t resident = 0;
    file >> total >> resident;
    return resident;
}

// Allowance for the caches of the allocator and of the checking tools.
constexpr std::size_t SLACK_PAGES = 512;

using LongLife = UpdateOnDevice;

// A leak of the smallest block at each poll exceeds the tolerance by then.
TEST_F(LongLife, WaitingForAKeyForThreeHoursLeaksNothing) {
    constexpr int POLLS = 3 * 60 * 60 * 10;
    fs::remove_all(device.root() / "USB HD");
    setCallHook([](const HookedCall& call) {
        return std::string(call.name) == "Sleep" ? ERROR_GEN_FAILURE : ERROR_SUCCESS;
    });
    SimpleUI screen;
    for (int i = 0; i < 1000; ++i)
        screen.tick();
    const std::size_t pages = residentPages();
    for (int i = 0; i < POLLS; ++i)
        screen.tick();
    EXPECT_LE(residentPages(), pages + SLACK_PAGES);
}

}  // namespace
