// Reads and writes whole files of this computer.
#pragma once

#include <filesystem>
#include <string>

// Throws std::runtime_error, naming the file and the reason, when it cannot be read.
std::string readHostFile(const std::filesystem::path& path);

// Like readHostFile, but returns an empty text when there is no such file.
std::string readHostFileIfThere(const std::filesystem::path& path);

// Throws std::runtime_error, naming the file and the reason, when it cannot be read.
void requireReadable(const std::filesystem::path& path);

// The reason why a stream could not be opened, or a file be written.
std::string lastError();

// Replaces the file atomically; its folder must exist. Throws std::runtime_error, naming the file
// and the reason, on failure.
void writeHostFile(const std::filesystem::path& path, const std::string& content);
