// A key with which nothing is wrong, for tests to spoil.
#pragma once

#include <filesystem>
#include <string>

// The bytes of a ".fnt" file with a glyph for each printable ASCII character, `advance` pixels
// apart, on one page "<name>_0.png" of 16 by 16 pixels.
std::string fontBytes(const std::string& name, int advance);

// The bytes of a string table with the ten texts of the updater's own screen.
std::string tableBytes(const std::string& language);

// "ab" as UTF-16LE.
std::string utf16(const std::string& ascii);

// Writes the key below `folder`, which stands for the root of the storage device.
void writeSoundKey(const std::filesystem::path& folder);

// Writes a file and the folders on the way to it.
void writeFile(const std::filesystem::path& path, const std::string& bytes);

std::string readFile(const std::filesystem::path& path);
