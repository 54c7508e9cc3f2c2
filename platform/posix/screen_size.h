// The size of the simulated device's screen.
#pragma once

namespace host {

struct ScreenSize {
    int width;
    int height;
};

// That of UPDATER_SCREEN ("WIDTHxHEIGHT", up to 16384 each), 1024x768 without it. A text that is no
// such size is told of on standard error, once, and counts for nothing.
ScreenSize screenSize();

}  // namespace host
