// Debugger output goes to standard error, one line per message.

#include <cstdio>

#include "platform/posix/call_hook.h"
#include "platform/posix/utf.h"

void OutputDebugStringW(LPCWSTR text) {
    if (host::errorFromHook("OutputDebugStringW", text) != ERROR_SUCCESS)
        return;
    std::string line = host::toUtf8(text);
    line.erase(line.find_last_not_of("\r\n") + 1);
    for (char& c : line) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte == 0x7F)
            c = ' ';
    }
    std::fprintf(stderr, "%s\n", line.c_str());
}
