// A folder that is deleted together with the object, and when the program is interrupted.
#pragma once

#include <filesystem>

#include "tools/host/interrupt.h"

class TemporaryFolder {
  public:
    // Creates a folder beside `stem`, with a name that begins with `stem`'s, so that files can be
    // moved to `stem` within one file system. Throws std::runtime_error on failure.
    explicit TemporaryFolder(const std::filesystem::path& stem);
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    // Deletes the folder with everything in it, read-only files and folders included. Ignores
    // failures.
    ~TemporaryFolder();

    const std::filesystem::path& path() const { return path_; }

  private:
    std::filesystem::path path_;
    Leftover leftover_;
};

// Deletes a folder with everything in it, read-only files and folders included. Returns whether it
// is gone.
bool deleteFolder(const std::filesystem::path& folder);
