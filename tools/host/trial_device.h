// A temporary device with an empty installation and with the key plugged in. The update engine runs
// on it to predict an update. The key is only read.
#pragma once

#include <filesystem>
#include <string>

#include "tools/host/temporary_folder.h"

class TrialDevice {
  public:
    // Creates the device in the folder for temporary files. Throws std::runtime_error on failure.
    explicit TrialDevice(const std::filesystem::path& key);
    TrialDevice(const TrialDevice&) = delete;
    TrialDevice& operator=(const TrialDevice&) = delete;
    ~TrialDevice();

    const std::filesystem::path& root() const { return folder_.path(); }

    // The engine's paths to the key and to the installation. They end in a separator.
    static const std::string& usbRoot();
    static const std::string& flashRoot();

  private:
    std::filesystem::path previous_;  // what the device replaces while it exists
    TemporaryFolder folder_;
};
