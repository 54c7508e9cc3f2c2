// Which folders a key may be written to: USB sticks, and nothing that can hurt.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "tools/host/volume.h"

// Throws std::runtime_error when a folder is named twice, or when it is the key, in the key, or
// holds the key.
void requireDifferentFolders(const std::filesystem::path& key,
                             const std::vector<std::filesystem::path>& folders);

// Returns why a key must not be written to this folder; an empty text when it may. `anyFolder`
// allows what is not a stick, such as a mounted image or a folder for a test, but not the root or
// the home folder.
std::string whyNotWritten(const std::filesystem::path& folder, const std::filesystem::path& key,
                          const std::vector<Volume>& volumes, bool anyFolder);

// The mounted removable and USB disks, for "updatekey sticks".
struct Stick {
    Volume volume;
    Room room;
    std::string update;   // version of the update on it; empty when there is none
    std::string problem;  // why it cannot be written; empty when it can
};

std::vector<Stick> listSticks(const std::filesystem::path& systemRoot = "/");
