// Tests that the hidden quit sequence ends the program, and that no other keys do.

#include "app/window.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/posix/call_hook.h"
#include "tests/helpers/device_folder.h"

namespace {

constexpr WPARAM VK_RETURN = 0x0D;

class Window : public ::testing::Test {
  protected:
    void SetUp() override {
        setCallHook([this](const HookedCall& call) {
            quitMessages += call.name == std::string("PostQuitMessage") && call.arguments[0] == "0";
            return ERROR_SUCCESS;
        });
        press(VK_RETURN);
    }

    static void press(WPARAM key) { EXPECT_EQ(mainWindowProc(nullptr, WM_KEYDOWN, key, 0), 0); }

    // Presses F1 to F6 for the digits, and another key for a blank.
    static void press(const std::string& digits) {
        for (const char digit : digits)
            press(digit == ' ' ? VK_RETURN : VK_F1 + static_cast<WPARAM>(digit - '1'));
    }

    DeviceFolder device;
    int quitMessages = 0;
};

// Any other key restarts the sequence. After a wrong function key it cannot be completed until
// then.
TEST_F(Window, TheHiddenSequenceQuitsOnlyWhenComplete) {
    const std::pair<const char*, int> presses[] = {
        {"1443665 2211335", 0},  {" 1443665221133", 0}, {"5", 1}, {"1", 1}, {"14436652211335", 1},
        {" 114436652211335", 1}, {" 14436652211335", 2}};
    for (const auto& [digits, messages] : presses) {
        press(digits);
        EXPECT_EQ(quitMessages, messages) << digits;
    }
    EXPECT_EQ(mainWindowProc(nullptr, WM_DESTROY, 0, 0), 0);
    EXPECT_EQ(quitMessages, 3);
}

}  // namespace
