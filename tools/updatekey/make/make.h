// Makes a key: creates it in a temporary folder, checks it, and only then renames that folder to
// its final name.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "tools/updatekey/check/check.h"

struct MakeOptions {
    std::filesystem::path application;  // folder of the application's files
    std::filesystem::path guiData;      // folder of the GUI data
    std::filesystem::path notes;        // text of the release notes, UTF-8 or Latin-1
    std::string version;
    std::filesystem::path out;  // the key's folder; must be empty if it exists
};

struct MakeReport {
    CheckReport check;
    std::vector<std::string> leftOut;  // junk files that were not copied
    bool written = false;
};

// Makes the key unless it has errors; `out` is then unchanged. The key is reproducible: all times
// are SOURCE_DATE_EPOCH, or else the newest of the input, rounded down to even seconds. Throws
// std::runtime_error when the input cannot be read or the key cannot be written.
MakeReport makeKey(const MakeOptions& options, const CheckOptions& check);
