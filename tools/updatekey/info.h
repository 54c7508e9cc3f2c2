// What a key is, without judging it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "tools/diagnosis/key_tree.h"

struct FolderInfo {
    std::string path;
    std::size_t files = 0;  // all the way down
    uint64_t bytes = 0;
};

// Whether the key has a list of checksums, and the files are those that it lists.
enum class ManifestState { absent, matches, differs };

// "none", "matches" or "does not match".
const char* textOf(ManifestState state);

struct KeyInfo {
    bool seen = false;
    std::string version;
    std::vector<std::string> notes;  // UTF-8
    ManifestState manifest = ManifestState::absent;
    FolderInfo whole;
    FolderInfo application;
    FolderInfo guiData;
    std::vector<KeyEntry> tree;
};

KeyInfo describeKey(const std::filesystem::path& key);
