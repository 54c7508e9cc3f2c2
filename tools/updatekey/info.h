// Describes a key without checking it, except that its files are compared with its manifest.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "tools/host/folder_tree.h"
#include "tools/updatekey/check/check.h"
#include "tools/updatekey/make/manifest.h"

struct FolderInfo {
    std::string path;
    std::size_t files = 0;  // including subfolders
    uint64_t bytes = 0;
};

struct KeyInfo {
    bool accepted = false;  // whether the device accepts the key
    std::string version;
    std::vector<std::string> notes;  // UTF-8
    ManifestState manifest = ManifestState::Absent;
    FolderInfo whole;
    FolderInfo application;
    FolderInfo guiData;
    std::vector<TreeEntry> tree;
    Manifest checksums;  // of all files
};

KeyInfo describeKey(const std::filesystem::path& key);
