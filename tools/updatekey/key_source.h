// A key as given on the command line: a folder, or a disk image, which is extracted temporarily.
#pragma once

#include <filesystem>
#include <optional>

#include "tools/host/temporary_folder.h"

class KeySource {
  public:
    // Throws std::runtime_error when `key` is neither a folder nor a readable image.
    explicit KeySource(const std::filesystem::path& key);

    // The folder with the content of the storage device.
    const std::filesystem::path& folder() const { return folder_; }

  private:
    std::optional<TemporaryFolder> unpacked_;
    std::filesystem::path folder_;
};
