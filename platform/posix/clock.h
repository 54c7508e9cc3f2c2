// Host times in Windows terms.
#pragma once

#include <sys/stat.h>

#include "platform/posix/win32_api.h"

namespace host {

// Ticks of 100 ns since 1601, UTC.
FILETIME fileTime(const timespec& time);

}  // namespace host
