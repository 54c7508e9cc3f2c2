// Makes text from a key or a device safe to show on a terminal.
#pragma once

#include <string>

// Takes and returns UTF-8. Control characters and invalid bytes are shown as "\x1b".
std::string printable(const std::string& text);
