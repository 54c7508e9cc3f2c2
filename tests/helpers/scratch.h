// Folders for tests, of which nothing is left however the test ends.
#pragma once

#include <filesystem>

// Makes a new folder. Once this process and those that it forked are gone, also by a signal, the
// folder goes, and every program that was started meanwhile is ended.
std::filesystem::path makeScratchFolder();

// Removes such a folder earlier.
void removeScratchFolder(const std::filesystem::path& folder);
