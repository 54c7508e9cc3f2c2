// Whole files of the host, read and written in one go.
#pragma once

#include <string>

// Reads the file at `path` into `content`. Returns false, with `error` naming the file, on failure.
bool readHostFile(const std::string& path, std::string& content, std::string& error);

// Replaces the file at `path` by `content`; its folder must exist. The file appears whole or not at
// all. Returns false, with `error` naming the file, on failure.
bool writeHostFile(const std::string& path, const std::string& content, std::string& error);
