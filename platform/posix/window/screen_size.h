// The size of the simulated device's screen.
#pragma once

namespace host {

struct ScreenSize {
    int width;
    int height;
};

// Returns the size in UPDATER_SCREEN ("WIDTHxHEIGHT", each up to 16384), or the instrument's when
// it is not set. An invalid value is reported once on standard error and ignored.
ScreenSize screenSize();

}  // namespace host
