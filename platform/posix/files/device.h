// The host folder that stands for the device's file system.
//
// Paths of the device are resolved as text only: both separators, repeated separators, "." and
// "..", which never lead above the device folder, and trailing dots and blanks of names. place.h
// then finds the file on the host.
#pragma once

#include <string>

#include "platform/posix/win32_api.h"

// Returns the device folder: UPDATER_DEVICE, or "device" in the current folder.
const std::string& deviceRoot();

// Changes the device folder. For tests.
void setDeviceRoot(const std::string& folder);

namespace host {

constexpr char16_t SEPARATORS[] = u"/\\";

// Such a path refers to a folder.
bool endsInSeparator(LPCWSTR path);

// Resolves a path of the device to one of the host, without a separator at its end. A path without
// a leading separator is relative to the host's current folder.
std::string toHostPath(LPCWSTR path);

// Resolves the path argument of a call. Returns 0, or the error with which the call must fail: 3
// for a path of 260 characters or more, 123 for an invalid character.
DWORD resolveName(LPCWSTR path, std::string& hostPath);

}  // namespace host
