// Tests that an updater which waits for hours, or makes many updates, leaks no memory and no
// handles.

#include <unistd.h>

#include <fstream>
#include <functional>
#include <iterator>

#include "platform/posix/call_hook.h"
#include "tests/helpers/update_on_device.h"
#include "ui/simple_ui.h"

namespace fs = std::filesystem;

namespace {

std::size_t openHandles() {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator()));
}

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

// Repeats an action. After the first `settled` times it must not need more handles or more memory.
void expectNoGrowth(int times, int settled, const std::function<void(int)>& something) {
    for (int i = 0; i < settled; ++i)
        something(i);
    const std::size_t handles = openHandles();
    const std::size_t pages = residentPages();
    for (int i = settled; i < times; ++i)
        something(i);
    EXPECT_EQ(openHandles(), handles);
    EXPECT_LE(residentPages(), pages + SLACK_PAGES);
}

using LongLife = UpdateOnDevice;

// A leak of the smallest block at each poll exceeds the tolerance by then.
TEST_F(LongLife, WaitingForAKeyForThreeHoursLeaksNothing) {
    constexpr int POLLS = 3 * 60 * 60 * 10;
    fs::remove_all(device.root() / "USB HD");
    setCallHook([](const HookedCall& call) {
        return std::string(call.name) == "Sleep" ? ERROR_GEN_FAILURE : ERROR_SUCCESS;
    });
    SimpleUI screen;
    expectNoGrowth(POLLS, 1000, [&](int) { screen.tick(); });
}

TEST_F(LongLife, RepeatedUpdatesLeakNothing) {
    expectNoGrowth(200, 20, [this](int i) {
        device.write("USB HD/VELD/KSTRL/KSTRL.exe", "application " + std::to_string(i));
        ASSERT_EQ(run(), UpdateComplete) << "update " << i;
    });
    EXPECT_EQ(device.read("FlashDisk/VELD/KSTRL_old/KSTRL.exe"), "application 198");
    EXPECT_EQ(device.tree("FlashDisk/VELD/KSTRL"), (Tree{{"KSTRL.exe", "application 199"}}));
}

}  // namespace
