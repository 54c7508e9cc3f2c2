// Writes and reads files so that they are on the medium, not in a cache. All of these throw
// std::filesystem::filesystem_error on failure.
#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>

// Called with each piece of a file.
using Piece = std::function<void(const char* bytes, std::size_t size)>;

// Copies a file, and brings it to the medium.
void copyToMedium(const std::filesystem::path& from, const std::filesystem::path& to,
                  const Piece& copied);

// Reads a file from the medium, past this computer's cache.
void readFromMedium(const std::filesystem::path& file, const Piece& read);

// Brings everything on the file system of `folder` to the medium, the disk's own cache included.
void flushMedium(const std::filesystem::path& folder);
