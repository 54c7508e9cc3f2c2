// The last error, and the mapping from errno to Windows error numbers.
#pragma once

#include "platform/posix/win32_api.h"

namespace host {

// Sets the last error and returns FALSE, as the result of a failed call.
BOOL fail(DWORD error);

// Returns the Windows error number for an errno.
DWORD windowsError(int error);

}  // namespace host
