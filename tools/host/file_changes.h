// Compares the files of two folders of this computer.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

struct HostFile {
    std::filesystem::path file;
    uint64_t size;  // bytes
};

// Files by the path under which they are compared, with "/".
using FileSet = std::map<std::string, HostFile>;

struct FileChange {
    enum class Kind { Added, Changed, Gone };

    std::string path;
    Kind kind;
    uint64_t before;  // bytes; 0 when added
    uint64_t after;   // bytes; 0 when the file is gone
};

// "new", "changed" or "gone".
const char* nameOf(FileChange::Kind kind);

// Returns the files that differ, by path. Files are read only when their sizes are equal. Throws
// std::runtime_error when one cannot be read.
std::vector<FileChange> compareFiles(const FileSet& before, const FileSet& after);

// Lists the files in `folder` and its subfolders. `prefix` is put before each path.
FileSet filesIn(const std::filesystem::path& folder, const std::string& prefix = {});
