// Flushes files and folders to the disk, against power cuts. The instrument's disk writes through.
// The host caches writes and may write a file's name before its content, so that a new file could
// be empty after a power cut.
//
// This relies on the file system writing changes of names in order, so that one flush includes all
// earlier ones. Journaling file systems do; FAT does not.
#pragma once

#include <string>

namespace host {

// Flushes the whole file system of an opened folder, file contents included. Returns false and sets
// errno on failure.
bool flushDisk(int folder);

// Flush the names in the folder, or in the parent folder of `path`. Return false and set errno on
// failure.
bool flushFolder(int folder);
bool flushFolderOf(const std::string& path);

}  // namespace host
