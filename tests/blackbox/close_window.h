// The desktop's close button.
#pragma once

#include <string>

// Asks the only window on `display` to close, as a window manager does when its button is pressed.
// Returns its size, "1024x768"; nothing when there is no window.
std::string askWindowToClose(const std::string& display);
