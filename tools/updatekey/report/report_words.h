// Phrases used by several reports.
#pragma once

#include <cstdint>
#include <string>

#include "tools/host/printable.h"

// "3 files", "1 file".
std::string countWords(std::size_t count, const std::string& noun);

// "2MB (2097152 bytes)".
std::string sizeWords(uint64_t bytes);
