// Where a path of the device leads to on the host. What is looked at and then changed is reached by
// a folder that is held open and a name in it, so that it is the same, whatever becomes of the path
// meanwhile.
//
// The device knows no links: below its drives (the first folder of a path, which may be a mount
// point or a link to one) a path through a link is refused. Nor does it tell case apart: where a
// folder on the way or what is to be opened is not there as it is written, one that differs in case
// only is taken. What is to be made is made as it is written.
#pragma once

#include <sys/stat.h>

#include <string>
#include <vector>

#include "platform/posix/descriptor.h"
#include "platform/posix/win32_api.h"

namespace host {

// Opens a resolved path as open() does, and never a link or through one: that gives -1 and ELOOP.
// The kernel looks for links on its way, which costs no call for each folder.
int openResolved(const std::string& host, int flags, mode_t mode = 0);

struct Place {
    Descriptor folder;  // to go on from, not to read
    std::string name;   // "." for the device folder itself
};

// Opens the folder in which `path` stands, whether or not there is something of that name. Returns
// 0, or the error with which the call is to fail: 3 where a folder is missing, 5 for a path through
// a link, 123 for one that no name can have.
DWORD locate(LPCWSTR path, Place& place);

enum class Case { any, asWritten };

// The same for something that must be there; tells its status, of a link its own. 2 where there is
// nothing of that name, 123 for a file with a separator behind it.
DWORD find(LPCWSTR path, Place& place, struct stat& status, Case which = Case::any);

// Opens what stands at `place` as open() does, but never a link.
int openAt(Place& place, int flags, mode_t mode = 0);

// Changes `name` to the first one in the folder that differs from it in case only. Returns false,
// with ENOENT as errno, when there is none.
bool findOtherCase(int folder, std::string& name);

// Adds the names in a folder, "." and ".." left out, sorted by their bytes. Returns false, and sets
// errno, when they cannot all be read.
bool readNames(int folder, std::vector<std::string>& names);

}  // namespace host
