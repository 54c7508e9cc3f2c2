// The folder of the host that stands for the device's file system.
//
// A path of the device is resolved on its text alone: both separators, doubled ones, "." and "..",
// which never climb above the device folder. The device knows no links: below its drives (the first
// folder of a path, which may be a mount point or a link to one) a path through a link is refused.
#pragma once

#include <sys/types.h>

#include <string>

#include "platform/posix/win32_api.h"

// The device folder: the variable UPDATER_DEVICE, or "device" in the current folder.
const std::string& deviceRoot();

// Takes another folder from now on, for tests.
void setDeviceRoot(const std::string& folder);

namespace host {

constexpr char16_t SEPARATORS[] = u"/\\";

// A path that does not begin with a separator counts from the current folder of the host. The
// result has no separator at its end.
std::string resolveOnText(LPCWSTR path);

// Resolves `path` into `host` for use. Returns 0, or the error with which the call is to fail: 3
// for a path of 260 characters or more, 123 for one with a character that no name has, 5 for one
// that leads through a link.
DWORD resolve(LPCWSTR path, std::string& host);

// The same without looking for links, which openResolved() does.
DWORD resolveName(LPCWSTR path, std::string& host);

// Opens a resolved path as open() does, and never a link or through one: that gives -1 and ELOOP,
// where resolve() gives 5. The kernel looks for links on its way, which costs no call for each
// folder.
int openResolved(const std::string& host, int flags, mode_t mode = 0);

}  // namespace host
