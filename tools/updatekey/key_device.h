// A device for as long as the object lives, with the key plugged in and an installation in place:
// on it the engine itself says what it makes of the key. The key is only read.
#pragma once

#include <filesystem>
#include <string>

class KeyDevice {
  public:
    // Makes the device in the folder for temporary files. Throws std::runtime_error when it cannot.
    explicit KeyDevice(const std::filesystem::path& key);
    KeyDevice(const KeyDevice&) = delete;
    KeyDevice& operator=(const KeyDevice&) = delete;
    ~KeyDevice();

    const std::filesystem::path& root() const { return root_; }

  private:
    std::string previousRoot_;
    std::filesystem::path root_;
};

// Makes an empty folder of its own beside `stem`, with a name that begins with it.
// Throws std::runtime_error when that fails.
std::filesystem::path makeTemporaryFolder(const std::filesystem::path& stem);

// Deletes a folder tree, read-only folders too; failures are passed over.
void removeTemporaryFolder(const std::filesystem::path& folder);
