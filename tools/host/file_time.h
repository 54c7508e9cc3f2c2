// The times of files of this computer.
#pragma once

#include <ctime>
#include <filesystem>

// When the file was last changed, in seconds since 1970; 0 when unknown.
std::time_t changeTime(const std::filesystem::path& file);

// The newest of a folder's files.
std::time_t newestChange(const std::filesystem::path& folder);

// Sets the time of a file, a link or a folder, and that of its last use. Ignores failures.
void setChangeTime(const std::filesystem::path& file, std::time_t time);
