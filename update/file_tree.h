// The file-tree operations of the update.
//
// Failures are logged with the system's error number. Nothing is retried, and a failure does not
// stop the rest of the operation.
#pragma once

#include <string>

// Clears the read-only flag of one file. Traces to the debugger when the flag was set; logs an
// error when it cannot be cleared.
void clearReadOnly(const std::string& path);

// Deletes the folder `path` (ending in a separator) and everything below it, read-only files
// included. Returns 0 on success, 1 when an error was recorded; a missing folder is no error.
int deleteTree(const std::string& path);
