// A temporary simulated device with an installation and with the key plugged in. The update engine
// runs on it to predict an update. The key is only read.
#pragma once

#include <filesystem>
#include <string>

#include "tools/host/temporary_folder.h"

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
