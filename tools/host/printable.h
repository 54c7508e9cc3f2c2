// Replaces what could control a terminal in text from a key or a device.
#pragma once

#include <string>

// Takes and returns UTF-8. Control characters and invalid bytes are shown as "\x1b".
std::string printable(const std::string& text);
