// Reading of the GUI data's binary files.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using FilePointer = std::unique_ptr<std::FILE, FileCloser>;

// Opens the file for reading; null when that fails.
FilePointer openBinaryFile(const std::string& path);

// How many bytes lie between the position of the file and its end; 0 when that cannot be told.
uint64_t bytesLeft(std::FILE* file);
