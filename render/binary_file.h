// Reads binary files of the GUI data.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using FilePointer = std::unique_ptr<std::FILE, FileCloser>;

// Opens the file for reading; returns null on failure.
FilePointer openBinaryFile(const std::string& path);

// Returns the number of bytes between the file position and the end; 0 when it cannot be
// determined.
uint64_t bytesLeft(std::FILE* file);
