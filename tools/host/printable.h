// Replaces what could control a terminal in text from a key or a device.
#pragma once

#include <string>

// Takes and returns UTF-8. Control characters and invalid bytes are shown as "\x1b".
std::string printable(const std::string& text);

// Converts Latin-1, in which the device writes, to UTF-8.
std::string latin1ToUtf8(const std::string& text);
