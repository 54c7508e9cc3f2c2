// A valid key, for tests to damage.
#pragma once

#include <filesystem>
#include <set>
#include <string>

#include "tools/updatekey/check.h"

// Writes the key into `folder`, the root of the storage device.
void writeSoundKey(const std::filesystem::path& folder);

// Writes a file and creates its parent folders.
void writeFile(const std::filesystem::path& path, const std::string& bytes);

std::set<std::string> codesOf(const CheckReport& report);
