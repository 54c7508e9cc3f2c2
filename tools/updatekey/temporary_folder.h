// A folder that is there as long as the object is.
#pragma once

#include <filesystem>

class TemporaryFolder {
  public:
    // Beside `stem`, with a name that begins with it: on one file system with what `stem` names, so
    // that what is made in it can be moved there. Throws std::runtime_error when it cannot be made.
    explicit TemporaryFolder(const std::filesystem::path& stem);
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    // Deletes all that is in it, read-only folders too; failures are passed over.
    ~TemporaryFolder();

    const std::filesystem::path& path() const { return path_; }

  private:
    std::filesystem::path path_;
};
