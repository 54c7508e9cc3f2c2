// The folder of the host that stands for the device's file system.
//
// A path of the device is resolved on its text alone: both separators, doubled ones, "." and "..",
// which never climb above the device folder, and dots and blanks that end a name. place.h has what
// is then found on the host.
#pragma once

#include <string>

#include "platform/posix/win32_api.h"

// The device folder: the variable UPDATER_DEVICE, or "device" in the current folder.
const std::string& deviceRoot();

// Takes another folder from now on, for tests.
void setDeviceRoot(const std::string& folder);

namespace host {

constexpr char16_t SEPARATORS[] = u"/\\";

// Such a path names a folder.
bool endsInSeparator(LPCWSTR path);

// A path that does not begin with a separator counts from the current folder of the host. The
// result has no separator at its end.
std::string resolveOnText(LPCWSTR path);

// The same for use by a call. Returns 0, or the error with which the call is to fail: 3 for a path
// of 260 characters or more, 123 for one with a character that no name has.
DWORD resolveName(LPCWSTR path, std::string& host);

}  // namespace host
