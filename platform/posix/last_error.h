// The last error number, and what the host's error numbers are on Windows.
#pragma once

#include <string>

#include "platform/posix/win32_api.h"

namespace host {

// Sets the last error and returns FALSE, for the end of a failing call.
BOOL fail(DWORD error);

// The Windows number for `error`, an errno.
DWORD windowsError(int error);

// The same where it depends on what was not found: 2 if the folder of `hostPath` is there, 3 if
// not.
DWORD windowsError(int error, const std::string& hostPath);

}  // namespace host
