// Copies a file with its attributes.
#pragma once

#include <sys/stat.h>

#include "platform/posix/files/descriptor.h"

namespace host {

// Copies content, mode and times of an open file to the empty file `to`, which is new or `replaces`
// another one, and closes `to`. Returns false and sets errno when the copy is incomplete.
bool copyFile(int from, const struct stat& source, Descriptor& to, bool replaces);

}  // namespace host
