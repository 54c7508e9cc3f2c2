// Reads log files in tests.
#pragma once

#include <string>

#include "tests/helpers/device_folder.h"

// Returns the log after its header line, with line feeds as line ends on every system, or
// "(no header)".
inline std::string logMessages(const DeviceFolder& device, const std::string& path) {
    std::string text = device.read(path);
    for (std::size_t at = text.find("\r\n"); at != std::string::npos; at = text.find("\r\n", at))
        text.erase(at, 1);
    const std::size_t headerEnd = text.find('\n');
    if (text.rfind("Opening log at ", 0) != 0 || headerEnd == std::string::npos)
        return "(no header)";
    return text.substr(headerEnd + 1);
}
