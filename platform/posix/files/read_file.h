// Reads whole files of the host.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace host {

constexpr std::size_t ANY_SIZE = SIZE_MAX;

// Appends a regular file of at most `limit` bytes to `bytes`, without ever waiting for another
// program. Returns 0, or the errno of the failed call; EFBIG when the file is longer, EACCES when
// it is something else, such as a pipe.
int readFile(const std::string& path, std::string& bytes, std::size_t limit = ANY_SIZE);

// Returns the bytes up to the limit or the first failed read: an empty text when the file is
// missing, is a folder, or belongs to a /proc entry whose process has ended.
std::string readFile(const std::string& path, std::size_t limit = ANY_SIZE);

}  // namespace host
