#include <cerrno>
#include <system_error>

#include "platform/win32.h"
#include "tools/host/host_file.h"

// The runtime says "permission denied" of every file that it may not open.
std::string lastError() {
    return GetLastError() == ERROR_SHARING_VIOLATION ? "it is in use by another program"
                                                     : std::generic_category().message(errno);
}
