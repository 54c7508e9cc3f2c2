// Tests that no key or frame acts in the wrong state: starts an update too early, or leaves the
// operator stuck. A successful start of the application ends the process.

#include "ui/simple_ui.h"

#include <gtest/gtest.h>
#include <malloc.h>

#include <string>
#include <vector>

#include "platform/posix/call_hook.h"
#include "support/logger.h"
#include "tests/helpers/device_folder.h"
#include "ui/screen_layout.h"

namespace {

constexpr WPARAM VK_RETURN = 0x0D;

// A state without a row has the note in the place of "any other", whatever its number.
static_assert(layout::restartNoteTop(-1) == 105 && layout::restartNoteTop(6) == 105);

class Screen : public ::testing::Test {
  protected:
    void SetUp() override {
        device.write("FlashDisk/VELD/KSTRL/a");
        device.write("FlashDisk/VELD/ORBUI/data/b");
        Logger::instance().setPath("/FlashDisk/VELD/log.txt");
        setCallHook([this](const HookedCall& call) {
            const bool sleeps = call.name == std::string("Sleep");
            if (!sleeps && call.name != std::string("CreateProcessW"))
                return ERROR_SUCCESS;
            (sleeps ? pauses : launches).push_back(call.arguments[0]);
            return ERROR_FILE_NOT_FOUND;
        });
    }

    void plugIn() const {
        device.write("USB HD/VELD/KSTRL/a", "new");
        device.write("USB HD/VELD/ORBUI/data/b", "new");
        device.write("USB HD/VELD/kstrXReleaseNotes.txt", "KSTRL Release 2\n");
    }

    bool isStaging() const { return device.exists("FlashDisk/VELD/Update"); }
    bool isUpdated() const { return device.read("FlashDisk/VELD/KSTRL/a") == "new"; }

    void toReady() {
        plugIn();
        screen.tick();
    }
    void toUpdating() {
        toReady();
        screen.onKey(VK_HOME);
    }
    DeviceFolder device;
    std::vector<std::string> pauses;
    std::vector<std::string> launches;
    SimpleUI screen;
};

TEST_F(Screen, PollsForTheKeyEvery100MsUntilFound) {
    screen.onKey(VK_HOME);  // too early
    screen.tick();
    screen.tick();
    EXPECT_EQ(pauses, (std::vector<std::string>{"100", "100"}));
    // The screen may wait for days.
    const auto heapAfterPolls = [this] {
        for (int i = 0; i < 1000; ++i)
            screen.tick();
        pauses.clear();
        return ::mallinfo2().uordblks;
    };
    const std::size_t settled = heapAfterPolls();
    EXPECT_EQ(heapAfterPolls(), settled);
    plugIn();
    screen.tick();
    screen.tick();
    EXPECT_EQ(pauses.size(), 1U);
    EXPECT_FALSE(isStaging());
}

TEST_F(Screen, StartRunsTheUpdateAndLaunchesOnceAutomatically) {
    toReady();
    EXPECT_FALSE(isStaging());
    screen.onKey(VK_RETURN);
    EXPECT_FALSE(isStaging());
    screen.onKey(VK_HOME);
    EXPECT_TRUE(isStaging());
    screen.onKey(VK_HOME);
    for (int i = 0; i < 3; ++i) {
        EXPECT_FALSE(isUpdated());
        screen.tick();
    }
    EXPECT_TRUE(isUpdated());
    EXPECT_TRUE(launches.empty());
    for (int i = 0; i < 3; ++i)
        screen.tick();
    EXPECT_EQ(launches, std::vector<std::string>{"\\FlashDisk\\VELD\\KSTRL\\KSTRL.exe"});
    screen.onKey(VK_HOME);
    screen.onKey(VK_RETURN);
    EXPECT_EQ(launches.size(), 1U);
    EXPECT_EXIT(screen.onKey(VK_END), ::testing::ExitedWithCode(0), "");
}

TEST_F(Screen, AutoModeStartsTheUpdateAndRetriesTheLaunchEveryFrame) {
    screen.setAutoMode();
    screen.tick();
    EXPECT_FALSE(isStaging());
    plugIn();
    // The frame that finds the key also copies the first file.
    screen.tick();
    EXPECT_EQ(device.read("FlashDisk/VELD/Update/KSTRL/a"), "new");
    screen.tick();
    screen.tick();
    EXPECT_TRUE(isUpdated());
    EXPECT_TRUE(launches.empty());
    screen.tick();
    const std::size_t first = launches.size();
    EXPECT_GE(first, 1U);
    screen.tick();
    screen.tick();
    EXPECT_EQ(launches.size(), first + 2);
}

TEST_F(Screen, AfterAFailedUpdateAKeyRestartsAndTheNextKeyExits) {
    device.write("FlashDisk/VELD/Update/stray/x");
    toUpdating();
    for (int i = 0; i < 4; ++i)
        screen.tick();
    EXPECT_TRUE(launches.empty());
    screen.onKey(VK_RETURN);
    EXPECT_EQ(launches.size(), 1U);
    EXPECT_EXIT(screen.onKey(VK_HOME), ::testing::ExitedWithCode(0), "");
}

}  // namespace
