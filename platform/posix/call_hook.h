// A look-out over every call that the program makes of the system, for tests: it records call
// orders, injects faults, and can end the process at a call of its choice. Null in normal use.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/posix/win32_api.h"

struct HookedCall {
    const char* name;
    // Texts as UTF-8, numbers in decimal; records and handles are left out.
    std::vector<std::string> arguments;
};

// Sees a call before it is made. Returns 0 to let it go on, or the error number with which it is to
// fail without being made (a call that cannot fail is left out).
using CallHook = std::function<DWORD(const HookedCall& call)>;

// Replaces the hook; an empty one takes it away.
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

// Shows the call to the hook. Returns the error with which the call is to fail, 0 for none.
template <class... Arguments>
DWORD errorFromHook(const char* name, const Arguments&... arguments) {
    if (!callHook)
        return ERROR_SUCCESS;
    return callHook({name, {hookArgument(arguments)...}});
}

// The same for calls that report by the last error, which it sets. Returns whether the call fails.
template <class... Arguments>
bool refusedByHook(const char* name, const Arguments&... arguments) {
    const DWORD error = errorFromHook(name, arguments...);
    if (error != ERROR_SUCCESS)
        SetLastError(error);
    return error != ERROR_SUCCESS;
}

}  // namespace host
