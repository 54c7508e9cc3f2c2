// Reads and writes whole files of this computer, and describes what went wrong.
#pragma once

#include <string>

// Appends the file at `path` to `content`. Returns false, with `error` naming the file and the
// reason, on failure.
bool readHostFile(const std::string& path, std::string& content, std::string& error);

// Returns the file at `path`. Throws std::runtime_error, which names the file and the reason, on
// failure.
std::string readHostFile(const std::string& path);

// Replaces the file at `path` with `content` atomically; its folder must exist. Returns false, with
// `error` naming the file, on failure.
bool writeHostFile(const std::string& path, const std::string& content, std::string& error);
