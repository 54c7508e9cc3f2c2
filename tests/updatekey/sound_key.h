// A valid key, for tests to damage.
#pragma once

#include <cstdint>
#include <filesystem>
#include <set>
#include <string>

#include "tools/updatekey/check.h"

// Writes the key into `folder`, the root of the storage device.
void writeSoundKey(const std::filesystem::path& folder);

// A Windows program of nothing but its header, for a machine by its number there. Of `sections`
// pieces of content each is told to lie behind the file's end.
constexpr uint16_t ARM = 0x1C4;
constexpr uint16_t X64 = 0x8664;
std::string programBytes(uint16_t machine, char sections = 0);

// Writes a file and the folders on the way to it.
void writeFile(const std::filesystem::path& path, const std::string& bytes);

std::set<std::string> codesOf(const CheckReport& report);
