// Flushes files and folders to the disk, against power cuts. The instrument's disk writes through.
// The host caches writes and may write a file's name before its content, so that a new file could
// be empty after a power cut.
//
// A disk that has failed once has failed for the rest of the run: what it was given before the
// failure is lost, and a later flush that succeeds does not bring it back.
#pragma once

#include "platform/posix/win32_api.h"

namespace host {

// Notices from now on when the disk of an opened folder cannot write. Linux reports such an error
// once to each descriptor that was open when it happened, whichever program flushes first; so this
// comes before the first write. flushFolder and flushDisk do it too.
void watchDisk(int folder);

// Flushes the whole file system of an opened folder, file contents included, or only the names in
// the folder. Returns 0 or the Windows error of the first failure of that disk.
DWORD flushDisk(int folder);
DWORD flushFolder(int folder);

// Closes what is held of the watched disks and forgets their failures. For tests.
void forgetDisks();

}  // namespace host
