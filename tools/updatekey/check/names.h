// Checks file names: whether FAT32 and the device can store them, and whether they are those of
// junk files.
#pragma once

#include <cstdint>
#include <string>

#include "platform/utf.h"

// Whether the file at this path, or a folder in the path, is one that file managers, editors,
// debuggers or version control leave behind: ".DS_Store", "Thumbs.db", "~$notes.doc", "KSTRL.pdb".
bool isJunkPath(const std::string& path);

// Whether every character is in Latin-1. The device reads any other as "?", which is invalid in
// paths.
bool isLatin1(const std::string& utf8);

// The size of the largest file that FAT32 can hold, in bytes.
constexpr uint64_t FAT32_FILE_LIMIT = (uint64_t{1} << 32) - 1;

// Whether FAT32 can store this as a file name.
bool isFatName(const std::string& name);

// The short name of eight and three characters that FAT gives to a long name which is the first of
// its kind in a folder: "ANTENN~1.DAT". Empty for a name that is short itself.
std::string shortNameOf(const std::string& name);

// Folds case for comparing names as FAT32 does.
using host::foldCase;

// The length in UTF-16 characters, as the device counts.
std::size_t deviceLength(const std::string& utf8);
