// Tests that no invalid or impossible screen size reaches the window.

#include <gtest/gtest.h>

#include <cstdlib>
#include <tuple>

#include "platform/win32.h"

namespace {

TEST(ScreenSize, InvalidSizesAreReplacedByTheDefault) {
    const std::tuple<const char*, int, int> cases[] = {
        {"640x480", 640, 480},  {"1x16384", 1, 16384},  {"16384x1", 16384, 1},
        {"16385x1", 1024, 768}, {"1x16385", 1024, 768}, {"0x480", 1024, 768},
        {"640x0", 1024, 768},   {"640x-1", 1024, 768},  {"-1x480", 1024, 768},
        {"640", 1024, 768},     {"640*480", 1024, 768}, {"", 1024, 768}};
    // The size is read once per process.
    for (const auto& [variable, width, height] : cases) {
        EXPECT_EXIT(
            {
                ::setenv("UPDATER_SCREEN", variable, 1);
                const bool same = GetSystemMetrics(SM_CXSCREEN) == width &&
                                  GetSystemMetrics(SM_CYSCREEN) == height &&
                                  GetSystemMetrics(2) == 0;
                std::exit(same ? 0 : 1);
            },
            ::testing::ExitedWithCode(0), *variable == '\0' ? "^$" : "")
            << variable;
    }
}

}  // namespace
