// The file-tree operations by which the update changes the flash disk.
//
// Failures go to the log with the system's error number; nothing is retried, and no failure stops
// what can still be done.
#pragma once

#include <string>

// Clears the read-only flag of one file. A flag that was set is told to the debugger, a failure to
// clear it to the log.
void clearReadOnly(const std::string& path);

// Deletes the folder `path` (ending in a separator) and everything below it, read-only files too.
// Returns 0 when no error was recorded, 1 otherwise; a folder that is not there is no error.
int deleteTree(const std::string& path);
