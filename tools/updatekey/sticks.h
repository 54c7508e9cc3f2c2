// Brings a key onto sticks: onto all of them at once, each read back from the medium.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "tools/updatekey/check.h"
#include "tools/updatekey/manifest.h"

struct WriteOptions {
    std::filesystem::path key;
    std::vector<std::filesystem::path> sticks;  // folders on which the sticks are mounted
    bool replace = false;                       // an update that is on a stick may be removed
    CheckOptions check;
    // Told of each stick's progress, from several threads at once: its place in the list, and the
    // percentage done, of which the second half is the reading back.
    std::function<void(std::size_t stick, int percent)> progress;
};

struct StickReport {
    std::filesystem::path stick;
    std::string problem;  // why it is no key; empty for a good stick
    double seconds = 0;
};

struct WriteReport {
    CheckReport check;
    std::vector<StickReport> sticks;  // empty when the check found errors: then nothing is written

    bool allGood() const;
};

// Writes the key in which no error is found onto every stick and compares it with the manifest by
// reading it back past the host's cache. Until then the update's folder has a name that the device
// does not look for: a stick on which the work was not ended is no key. One stick that fails does
// not keep the others from being written.
WriteReport writeSticks(const WriteOptions& options);

// Writes the files of `manifest` from the folder `key` onto one stick. Throws std::runtime_error
// with the reason, in words for whoever holds the stick, when it is no key afterwards.
void writeStick(const std::filesystem::path& key, const Manifest& manifest,
                const std::filesystem::path& stick, bool replace, const Progress& progress);
