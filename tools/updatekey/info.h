// Describes a key without checking it, except that its files are compared with its manifest.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "tools/host/folder_tree.h"

struct FolderInfo {
    std::string path;
    std::size_t files = 0;  // including subfolders
    uint64_t bytes = 0;
};

// Whether the key has a manifest, and whether the files match it.
enum class ManifestState { Absent, Matches, Differs };

// "none", "matches" or "does not match".
const char* textOf(ManifestState state);

struct KeyInfo {
    bool seen = false;  // whether the device accepts the key
    std::string version;
    std::vector<std::string> notes;  // UTF-8
    ManifestState manifest = ManifestState::Absent;
    FolderInfo whole;
    FolderInfo application;
    FolderInfo guiData;
    std::vector<TreeEntry> tree;
};

KeyInfo describeKey(const std::filesystem::path& key);
