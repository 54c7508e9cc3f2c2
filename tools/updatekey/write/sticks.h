// Writes a key to several USB sticks at the same time, and reads each one back.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "tools/updatekey/check/check.h"

struct WriteOptions {
    std::filesystem::path key;
    std::filesystem::path source;               // where the key was read from, such as its image
    std::vector<std::filesystem::path> sticks;  // mount points of the sticks
    bool replace = false;                       // an update on a stick may be replaced
    bool anyFolder = false;                     // also write to what is not a stick
    bool eject = false;                         // take a good stick out of use
    std::filesystem::path systemRoot = "/";     // a test has its own list of mounted sticks
    // Reports progress, from several threads at once: the stick's position in the list, and the
    // percentage done, of which the second half is reading back.
    std::function<void(std::size_t stick, int percent)> progress;
};

struct StickReport {
    std::filesystem::path stick;
    std::string problem;            // why the stick is not a key; empty for a good one
    std::vector<std::string> kept;  // files and folders in VELD that are no part of the update
    bool ejected = false;
    std::string notEjected;  // why a good stick that was to be ejected was not
    double seconds = 0;
};

struct WriteReport {
    CheckReport check;
    std::vector<StickReport> sticks;  // empty when the check found errors: nothing is written

    bool allGood() const;
};

// Writes a key without errors to every stick, reads it back from the stick, not from the cache, and
// compares it with the manifest. Until then the update's folder has a name that the device ignores,
// so that an unfinished stick is not a key, and an update that is replaced stays usable. A faulty
// stick does not stop the others. Throws std::runtime_error, before anything is written, when a
// stick is named twice or is that of the key.
WriteReport writeSticks(const WriteOptions& options, const CheckOptions& check);
