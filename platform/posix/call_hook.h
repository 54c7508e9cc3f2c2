// Test hook: sees every Win32 call before it is made, and may fail it or kill the process. It is
// null in normal use.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/posix/win32_api.h"
#include "platform/posix/window/display_end.h"

struct HookedCall {
    const char* name;
    // Text as UTF-8, numbers in decimal; structures and handles are left out.
    std::vector<std::string> arguments;
};

// Called before each Win32 call. Returns 0 to let the call proceed, or the error number with which
// it must fail without being made. A call that cannot fail is skipped instead.
using CallHook = std::function<DWORD(const HookedCall& call)>;

// Replaces the hook; an empty one removes it.
void setCallHook(CallHook hook);

namespace host {

extern CallHook callHook;

std::string hookArgument(LPCWSTR text);
inline std::string hookArgument(DWORD number) {
    return std::to_string(number);
}
inline std::string hookArgument(int number) {
    return std::to_string(number);
}

// Passes the call to the hook. Returns the error with which the call must fail, or 0.
template <class... Arguments>
DWORD errorFromHook(const char* name, const Arguments&... arguments) {
    waitsForDisplay = 0;
    if (!callHook)
        return ERROR_SUCCESS;
    return callHook({name, {hookArgument(arguments)...}});
}

// For calls that report errors with GetLastError: sets the last error. Returns whether the call
// must fail.
template <class... Arguments>
bool refusedByHook(const char* name, const Arguments&... arguments) {
    const DWORD error = errorFromHook(name, arguments...);
    if (error != ERROR_SUCCESS)
        SetLastError(error);
    return error != ERROR_SUCCESS;
}

// refusedByHook for a call that needs the display, or waits and changes nothing.
template <class... Arguments>
bool refusedDisplayCall(const char* name, const Arguments&... arguments) {
    const bool refused = refusedByHook(name, arguments...);
    waitsForDisplay = 1;
    return refused;
}

}  // namespace host
