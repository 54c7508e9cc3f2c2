// The desktop's close button.
#pragma once

#include <string>

// Asks the only window on `display` to close, as a window manager does when its button is pressed.
// Returns false when there is no window.
bool askWindowToClose(const std::string& display);
