// Times of the host in the terms of Windows.
#pragma once

#include <sys/stat.h>

#include "platform/posix/win32_api.h"

namespace host {

// 100 ns since 1601, UTC.
FILETIME fileTime(const timespec& time);

// The device's time zone is read once and kept until the program sets it; the device folder's
// change calls for another look.
void forgetTimeZone();

}  // namespace host
