// Opens files of the device by their narrow path. A FilePointer closes its file when destroyed.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

#include "platform/win32.h"

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using FilePointer = std::unique_ptr<std::FILE, FileCloser>;

// Opens the file in a mode of the runtime's wide file open, such as "rb"; returns null on failure.
FilePointer openFile(const std::string& path, LPCWSTR mode);

// Returns the number of bytes between the file position and the end; 0 when it cannot be
// determined.
uint64_t bytesLeft(std::FILE* file);
