// Text from a key or a device, made fit to be shown: on a terminal it must not become a command.
#pragma once

#include <string>

// UTF-8 in, UTF-8 out: a control character is shown as "\x1b", a byte that is no UTF-8 likewise.
std::string printable(const std::string& text);
