// What a power cut must not take away. The instrument's disk writes through; the host keeps in
// memory what it is given, and brings names to the disk before contents: a new file could come back
// without a byte.
//
// Relied upon: changes of names reach the disk in the order in which they were made, so that one
// flush brings all earlier ones along. A file system with a journal does so; a FAT disk does not.
#pragma once

#include <string>

namespace host {

// Brings everything on the file system of an opened folder to its disk, contents included. Returns
// false, and sets errno, when the disk does not take it.
bool flushDisk(int folder);

// Brings the names in the folder to the disk, or in that in which `path` stands. The same result.
bool flushFolder(int folder);
bool flushFolderOf(const std::string& path);

}  // namespace host
