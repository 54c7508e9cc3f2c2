// Tests that the screen, which may wait for a key for days, does not take more and more memory, and
// finds the key then.

#include "ui/simple_ui.h"

#include <gtest/gtest.h>
#include <malloc.h>

#include <string>

#include "platform/posix/call_hook.h"
#include "tests/helpers/device_folder.h"

namespace {

TEST(Screen, WaitsForAKeyWithoutTakingMemory) {
    const DeviceFolder device;
    setCallHook([](const HookedCall& call) -> DWORD {
        return call.name == std::string("Sleep") ? ERROR_INVALID_PARAMETER : ERROR_SUCCESS;
    });
    struct Screen : SimpleUI {
        using SimpleUI::updater;
    } screen;
    const auto heapAfterPolls = [&screen] {
        for (int i = 0; i < 1000; ++i)
            screen.tick();
        return ::mallinfo2().uordblks;
    };
    const std::size_t settled = heapAfterPolls();
    EXPECT_EQ(heapAfterPolls(), settled);
    device.write("USB HD/VELD/KSTRL/KSTRL.exe");
    device.write("USB HD/VELD/ORBUI/data/bg.raw");
    screen.tick();
    EXPECT_EQ(screen.updater.getState(), ReadyToUpdate);
}

}  // namespace
