// A key with which nothing is wrong, for tests to spoil.
#pragma once

#include <filesystem>
#include <set>
#include <string>

#include "tools/updatekey/check.h"

// Writes the key below `folder`, which stands for the root of the storage device.
void writeSoundKey(const std::filesystem::path& folder);

// Writes a file and the folders on the way to it.
void writeFile(const std::filesystem::path& path, const std::string& bytes);

std::set<std::string> codesOf(const CheckReport& report);
