// Makes a key without faults, to which tests add faults.
#pragma once

#include <cstdint>
#include <filesystem>
#include <set>
#include <string>

#include "tools/updatekey/check/check.h"

// Writes the key into `folder`, the root of the storage device.
void writeSoundKey(const std::filesystem::path& folder);

// Returns a Windows program that is only a header, for a machine given by its number in that
// header. It lists `sections` sections, each beyond the end of the file.
constexpr uint16_t ARM = 0x1C4;
constexpr uint16_t X64 = 0x8664;
std::string programBytes(uint16_t machine, char sections = 0);

// Writes a file and creates its parent folders.
void writeFile(const std::filesystem::path& path, const std::string& bytes);

// Leaves a key for the comparison with the Windows program, when UPDATEKEY_ROWS names a folder for
// it on the same disk.
void leaveRow(const std::filesystem::path& key, const std::string& name);

std::set<std::string> codesOf(const Findings& findings);
