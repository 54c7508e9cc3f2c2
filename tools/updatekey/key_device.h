// A device for as long as the object lives, with the key plugged in and an installation in place:
// on it the engine itself says what it makes of the key. The key is only read.
#pragma once

#include <filesystem>
#include <string>

#include "tools/updatekey/temporary_folder.h"

class KeyDevice {
  public:
    // Makes the device in the folder for temporary files. Throws std::runtime_error when it cannot.
    explicit KeyDevice(const std::filesystem::path& key);
    KeyDevice(const KeyDevice&) = delete;
    KeyDevice& operator=(const KeyDevice&) = delete;
    ~KeyDevice();

    const std::filesystem::path& root() const { return folder_.path(); }

  private:
    std::string previousRoot_;
    TemporaryFolder folder_;
};
