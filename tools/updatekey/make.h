// Makes a key: lays its tree, judges it, and only then puts it in place.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "tools/updatekey/check.h"

struct MakeOptions {
    std::filesystem::path application;  // folder of the application's files
    std::filesystem::path guiData;      // folder of the GUI data
    std::filesystem::path notes;        // text of the release notes, UTF-8 or Latin-1
    std::string version;
    std::filesystem::path out;  // folder to be made; one that is there must be empty
    CheckOptions check;
};

struct MakeReport {
    CheckReport check;
    std::vector<std::string> leftOut;  // files of a desktop system's, not put on the key
    bool written = false;
};

// Makes the key unless an error is found in it; then `out` is as it was before. The same input
// gives the same bytes and times: all times are SOURCE_DATE_EPOCH, or else the newest of the input.
// Throws std::runtime_error when the input cannot be read or the key not be written.
MakeReport makeKey(const MakeOptions& options);

// The bytes of the release notes as the device reads them: Latin-1, lines ended by line feeds, the
// first one with the version. Throws std::runtime_error for a version that is not one line of
// Latin-1, for notes that name another one, and for characters outside Latin-1.
std::string composeNotes(const std::string& text, const std::string& version);
