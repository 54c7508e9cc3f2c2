// Temporary folders for tests. A test that is killed leaves its own behind; scripts/in-memory, in
// which the tests run, deletes them.
#pragma once

#include <filesystem>

// Creates a new folder in the temporary folder.
std::filesystem::path makeScratchFolder();

// Removes such a folder and what it contains.
void removeScratchFolder(const std::filesystem::path& folder);
