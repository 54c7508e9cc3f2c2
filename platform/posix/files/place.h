// The place on the host that a path of the device leads to. A call that checks a file and then
// changes it holds the file's folder open and uses only the name in it, so that both steps reach
// the same file even when another program moves folders meanwhile.
//
// The device has no links: a path that passes through a link is refused, except for the drives (the
// first folder of a path), which may be mount points or links to them. Names are compared without
// regard to case: when a folder or file does not exist as written, the one that differs in case
// only is used. New names are created as written.
#pragma once

#include <sys/stat.h>

#include <string>
#include <vector>

#include "platform/posix/files/descriptor.h"
#include "platform/posix/win32_api.h"

namespace host {

// Opens a resolved path like open(), but never through a link: that returns -1 with errno ELOOP.
// The kernel checks for links itself, which saves one call per folder.
int openResolved(const std::string& hostPath, int flags, mode_t mode = 0);

struct Place {
    Descriptor folder;  // a path descriptor; cannot be read
    std::string name;   // "." for the device folder itself
};

// Opens the parent folder of `path`, whether or not the last name exists. Returns 0 or the Windows
// error of the call: 3 when a folder is missing, 5 for a path through a link, 123 for an invalid
// name.
DWORD locate(LPCWSTR path, Place& place);

enum class Case { Any, AsWritten };

// Like locate, for a name that must exist; also returns its status (for a link, the link's own).
// Returns 2 when the name does not exist, 123 for a file with a separator after its name.
DWORD find(LPCWSTR path, Place& place, struct stat& status, Case which = Case::Any);

// Opens the file at `place` like open(), but never a link.
int openAt(Place& place, int flags, mode_t mode = 0);

// Replaces `name` with the first name in the folder that differs from it in case only. Returns
// whether there is one.
bool findOtherCase(int folder, std::string& name);

// Returns the names in a folder, without "." and "..", sorted by their bytes, up to the first that
// cannot be read.
std::vector<std::string> readNames(int folder);

// Like windowsError; ENOENT gives 2 when the parent folder of `hostPath` exists, else 3.
DWORD windowsError(int error, const std::string& hostPath);

}  // namespace host
