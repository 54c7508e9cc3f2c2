// Writes a key to several USB sticks at the same time, and reads each one back.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "tools/updatekey/check/check.h"
#include "tools/updatekey/make/manifest.h"

struct WriteOptions {
    std::filesystem::path key;
    std::vector<std::filesystem::path> sticks;  // mount points of the sticks
    bool replace = false;                       // an existing update on a stick may be removed
    CheckOptions check;
    // Reports progress, from several threads at once: the stick's position in the list, and the
    // percentage done, of which the second half is reading back.
    std::function<void(std::size_t stick, int percent)> progress;
};

struct StickReport {
    std::filesystem::path stick;
    std::string problem;  // why the stick is not a key; empty for a good one
    double seconds = 0;
};

struct WriteReport {
    CheckReport check;
    std::vector<StickReport> sticks;  // empty when the check found errors: nothing is written

    bool allGood() const;
};

// Writes a key without errors to every stick, reads it back from the stick, not from the cache, and
// compares it with the manifest. Until then the update's folder has a name that the device ignores,
// so that an unfinished stick is not a key. A faulty stick does not stop the others.
WriteReport writeSticks(const WriteOptions& options);

// Writes the files of `manifest` from the folder `key` to one stick. Throws std::runtime_error,
// with the reason for the person with the stick, on failure.
void writeStick(const std::filesystem::path& key, const Manifest& manifest,
                const std::filesystem::path& stick, bool replace, const Progress& progress);
