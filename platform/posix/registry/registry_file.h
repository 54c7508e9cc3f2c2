// The registry of the simulated device: a file in its folder.
#pragma once

#include "platform/registry_text.h"

namespace host {

// A missing file is an empty registry. Returns 0, or the error number when an existing file cannot
// be read. Only a regular file is read, without waiting.
DWORD loadRegistry(Registry& registry);

// Replaces the file atomically. Returns 0 or the error number: 5 when a line would be lost.
DWORD saveRegistry(const Registry& registry);

}  // namespace host
