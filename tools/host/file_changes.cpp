#include "tools/host/file_changes.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "tools/host/folder_tree.h"

namespace fs = std::filesystem;

namespace {

bool sameContent(const HostFile& a, const HostFile& b) {
    if (a.size != b.size)
        return false;
    std::ifstream first(a.file, std::ios::binary);
    std::ifstream second(b.file, std::ios::binary);
    if (!first || !second)
        throw std::runtime_error("cannot read " + (first ? b : a).file.generic_string());
    return std::equal(std::istreambuf_iterator<char>(first), std::istreambuf_iterator<char>(),
                      std::istreambuf_iterator<char>(second));
}

}  // namespace

const char* nameOf(FileChange::Kind kind) {
    constexpr const char* NAMES[] = {"new", "changed", "gone"};
    return NAMES[static_cast<std::size_t>(kind)];
}

std::vector<FileChange> compareFiles(const FileSet& before, const FileSet& after) {
    using Kind = FileChange::Kind;
    std::vector<FileChange> changes;
    for (const auto& [path, file] : before)
        if (after.count(path) == 0)
            changes.push_back({path, Kind::Gone, file.size, 0});
    for (const auto& [path, file] : after) {
        const auto old = before.find(path);
        if (old == before.end())
            changes.push_back({path, Kind::Added, 0, file.size});
        else if (!sameContent(old->second, file))
            changes.push_back({path, Kind::Changed, old->second.size, file.size});
    }
    std::sort(changes.begin(), changes.end(),
              [](const FileChange& a, const FileChange& b) { return a.path < b.path; });
    return changes;
}

FileSet filesIn(const fs::path& folder, const std::string& prefix) {
    FileSet files;
    for (const TreeEntry& entry : readTree(folder))
        if (entry.kind == TreeEntry::Kind::File)
            files[prefix + entry.path] = {folder / entry.path, entry.size};
    return files;
}
