// The changes that an update from a key makes on a device, or the differences between two keys.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "tools/diagnosis/finding.h"
#include "tools/host/file_changes.h"

struct Difference {
    std::string versionBefore;  // empty when unknown
    std::string versionAfter;
    bool bothAreKeys = false;              // a device has no release notes to compare
    std::vector<std::string> notesBefore;  // lines, UTF-8
    std::vector<std::string> notesAfter;
    std::vector<FileChange> files;  // by path below the maker's folder: "KSTRL/KSTRL.exe"
    Findings findings;              // about the versions
    std::size_t same = 0;           // number of identical files

    bool notesDiffer() const { return bothAreKeys && notesBefore != notesAfter; }
    bool empty() const;
};

// Adds a warning when an update from the version `before` to `after` goes back or changes nothing.
void checkVersions(const std::string& before, const std::string& after, Findings& findings);

// Compares the files that the device would copy from the key `key` with those of `other`, a key or
// a device. Throws std::runtime_error when `other` is neither, or a file cannot be read.
Difference compareKeys(const std::filesystem::path& key, const std::filesystem::path& other);
