// The last error number, and what the host's error numbers are on Windows.
#pragma once

#include <string>

#include "platform/posix/win32_api.h"

namespace host {

// Sets the last error and returns FALSE, for the end of a failing call.
BOOL fail(DWORD error);

// The Windows number for `error`, an errno. For what was not found it depends on where: the folder
// of `hostPath` being there gives 2, otherwise 3.
DWORD windowsError(int error, const std::string& hostPath);

}  // namespace host
