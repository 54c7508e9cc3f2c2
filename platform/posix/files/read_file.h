// Reads whole files of the host.
#pragma once

#include <string>

namespace host {

// Appends the file to `bytes`. Returns 0, or the errno of the failed call.
int readFile(const std::string& path, std::string& bytes);

// Returns the bytes up to the first failed read: an empty text when the file is missing, is a
// folder, or belongs to a /proc entry whose process has ended.
std::string readFile(const std::string& path);

}  // namespace host
