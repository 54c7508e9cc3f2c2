// A whole file of the host.
#pragma once

#include <string>

namespace host {

// Puts its bytes into `bytes`. Returns 0, or the errno of the call that failed.
int readFile(const std::string& path, std::string& bytes);

// Its bytes up to the first read that fails: none when there is no such file, when it is a folder,
// or when it is the record of a process that has just ended.
std::string readFile(const std::string& path);

}  // namespace host
