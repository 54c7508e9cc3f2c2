// A temporary device with the key plugged in and an installation, on which the update engine itself
// processes the key. The key is only read.
#pragma once

#include <filesystem>
#include <string>

#include "tools/updatekey/temporary_folder.h"

class KeyDevice {
  public:
    // Creates the device in the folder for temporary files. Throws std::runtime_error on failure.
    explicit KeyDevice(const std::filesystem::path& key);
    KeyDevice(const KeyDevice&) = delete;
    KeyDevice& operator=(const KeyDevice&) = delete;
    ~KeyDevice();

    const std::filesystem::path& root() const { return folder_.path(); }

  private:
    std::string previousRoot_;
    TemporaryFolder folder_;
};
