// Lists a folder of this computer with all its subfolders.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

struct TreeEntry {
    enum class Kind { File, Folder, Link, Other };

    std::string path;  // relative to the folder, with "/"
    Kind kind;
    uint64_t size;  // bytes; 0 for all but files
};

// Returns everything below `folder`, sorted by path; nothing when it is not a folder. Links are
// listed, not followed. Throws std::runtime_error when a folder cannot be read.
std::vector<TreeEntry> readTree(const std::filesystem::path& folder);

// Returns the part after the last "/".
std::string nameOf(const std::string& path);

// Returns the part before the last "/"; empty when there is none.
std::string parentOf(const std::string& path);

inline bool startsWith(const std::string& text, const std::string& start) {
    return text.compare(0, start.size(), start) == 0;
}
