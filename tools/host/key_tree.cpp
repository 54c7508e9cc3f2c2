#include "tools/host/key_tree.h"

#include <algorithm>

namespace fs = std::filesystem;

namespace {

KeyEntry::Kind kindOf(const fs::directory_entry& entry) {
    std::error_code error;
    switch (entry.symlink_status(error).type()) {
        case fs::file_type::regular:
            return KeyEntry::Kind::File;
        case fs::file_type::directory:
            return KeyEntry::Kind::Folder;
        case fs::file_type::symlink:
            return KeyEntry::Kind::Link;
        default:
            return KeyEntry::Kind::Other;
    }
}

}  // namespace

std::vector<KeyEntry> readTree(const fs::path& folder) {
    std::vector<KeyEntry> entries;
    std::error_code error;
    fs::recursive_directory_iterator entry(folder, fs::directory_options::skip_permission_denied,
                                           error);
    const std::size_t rootLength = folder.string().size();
    for (const fs::recursive_directory_iterator end; !error && entry != end;
         entry.increment(error)) {
        const std::string full = entry->path().string();
        const std::size_t start = full.find_first_not_of('/', rootLength);
        const KeyEntry::Kind kind = kindOf(*entry);
        std::error_code noSize;
        const uint64_t size = kind == KeyEntry::Kind::File ? entry->file_size(noSize) : 0;
        entries.push_back({full.substr(start), kind, noSize ? 0 : size});
    }
    std::sort(entries.begin(), entries.end(),
              [](const KeyEntry& a, const KeyEntry& b) { return a.path < b.path; });
    return entries;
}

std::string nameOf(const std::string& path) {
    return path.substr(path.rfind('/') + 1);
}

std::string parentOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? std::string() : path.substr(0, slash);
}
