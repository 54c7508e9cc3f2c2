#include "tools/host/folder_tree.h"

#include <algorithm>
#include <stdexcept>

namespace fs = std::filesystem;

namespace {

TreeEntry::Kind kindOf(const fs::directory_entry& entry) {
    std::error_code error;
    switch (entry.symlink_status(error).type()) {
        case fs::file_type::regular:
            return TreeEntry::Kind::File;
        case fs::file_type::directory:
            return TreeEntry::Kind::Folder;
        case fs::file_type::symlink:
            return TreeEntry::Kind::Link;
        default:
            return TreeEntry::Kind::Other;
    }
}

}  // namespace

std::vector<TreeEntry> readTree(const fs::path& folder) {
    std::vector<TreeEntry> entries;
    std::error_code error;
    fs::recursive_directory_iterator entry(folder, error);
    fs::path lastListed = folder;
    const std::size_t rootLength = folder.generic_string().size();
    for (const fs::recursive_directory_iterator end; !error && entry != end;
         entry.increment(error)) {
        lastListed = entry->path();
        const std::string full = lastListed.generic_string();
        const std::size_t start = full.find_first_not_of('/', rootLength);
        const TreeEntry::Kind kind = kindOf(*entry);
        std::error_code noSize;
        const uint64_t size = kind == TreeEntry::Kind::File ? entry->file_size(noSize) : 0;
        entries.push_back({full.substr(start), kind, noSize ? 0 : size});
    }
    // Windows finds nothing at all in the root folder of an empty drive, not even ".".
    if (error && error != std::errc::no_such_file_or_directory && fs::is_directory(lastListed))
        throw std::runtime_error(lastListed.generic_string() +
                                 " cannot be read: " + error.message());
    std::sort(entries.begin(), entries.end(),
              [](const TreeEntry& a, const TreeEntry& b) { return a.path < b.path; });
    return entries;
}

std::string nameOf(const std::string& path) {
    return path.substr(path.rfind('/') + 1);
}

std::string parentOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? std::string() : path.substr(0, slash);
}
