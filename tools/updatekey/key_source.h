// A key as it is named on the command line: a folder, or a disk image that is unpacked for a look.
#pragma once

#include <filesystem>
#include <optional>

#include "tools/updatekey/temporary_folder.h"

class KeySource {
  public:
    // Throws std::runtime_error when `key` is neither a folder nor an image that can be read.
    explicit KeySource(const std::filesystem::path& key);

    // The folder that stands for the root of the storage device.
    const std::filesystem::path& folder() const { return folder_; }

  private:
    std::optional<TemporaryFolder> unpacked_;
    std::filesystem::path folder_;
};
