// Temporary folders for tests, removed however the test ends.
#pragma once

#include <filesystem>

// Creates a new folder. When this process has ended, even by a signal, the folder is removed, and
// its forked children and every program started meanwhile are ended.
std::filesystem::path makeScratchFolder();

// Removes such a folder at once.
void removeScratchFolder(const std::filesystem::path& folder);
