// What a power cut must not take away. The instrument's disk writes through; the host keeps in
// memory what it is given, and brings names to the disk before contents: a new file could come back
// without a byte.
//
// Relied upon: changes of names reach the disk in the order in which they were made, so that one
// flush brings all earlier ones along. A file system with a journal does so; a FAT disk does not.
#pragma once

#include <string>

namespace host {

// Brings everything on the file system of `path` to its disk, contents included. Returns false, and
// sets errno, when the disk does not take it.
bool flushDiskOf(const std::string& path);

// Brings the names in the folder in which `path` stands to the disk. The same result.
bool flushFolderOf(const std::string& path);

}  // namespace host
