// What a copy of a file takes along.
#pragma once

#include <sys/stat.h>

#include "platform/posix/descriptor.h"

namespace host {

// Copies the content, mode and times of an open file to an empty one, which is new or `replaces`
// another, and closes that. Returns false, and sets errno, when the copy is not complete.
bool copyFile(int from, const struct stat& source, Descriptor& to, bool replaces);

}  // namespace host
