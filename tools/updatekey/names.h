// Names of files: what the storage device and the update can hold, and what a desktop system left.
#pragma once

#include <string>

#include "platform/posix/utf.h"

// Files that file managers, editors, debuggers and version control leave behind: ".DS_Store",
// "Thumbs.db", "~$notes.doc", "KSTRL.pdb".
bool isJunkFile(const std::string& name);

// Whether a file manager gives such a name to a second copy: "KSTRL - Copy.exe", "a (1).dat".
bool isCopyName(const std::string& name);

// Whether every character is in Latin-1: the device reads "?" for any other, which no path may
// hold.
bool isLatin1(const std::string& utf8);

// Whether FAT32 can hold it as the name of one file.
bool isFatName(const std::string& name);

// For comparing as FAT32 does, which knows no case.
using host::foldCase;

// Length in the device's characters.
std::size_t deviceLength(const std::string& utf8);
