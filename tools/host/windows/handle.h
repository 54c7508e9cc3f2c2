// Handles of files and volumes, which are closed with the object.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "platform/win32.h"

struct CloseTheHandle {
    void operator()(void* handle) const { CloseHandle(handle); }
};
using Handle = std::unique_ptr<void, CloseTheHandle>;

// Throws std::filesystem::filesystem_error with the last call's error.
[[noreturn]] void failAt(const std::filesystem::path& path);

// Opens a file. Throws std::filesystem::filesystem_error on failure.
Handle openHandle(const std::filesystem::path& path, DWORD access, DWORD creation, DWORD flags);

// Opens the volume that holds `path`, such as "\\.\E:"; null on failure.
Handle openVolume(const std::filesystem::path& path);

// Returns the root folder of the volume that holds `path`, such as "E:\"; empty on failure.
std::wstring volumeRoot(const std::filesystem::path& path);
