#include "tools/updatekey/check/key_under_check.h"

#include <algorithm>

#include "tools/host/host_file.h"
#include "tools/updatekey/check/names.h"

const TreeEntry* KeyUnderCheck::find(const std::string& path) const {
    const auto entry = std::lower_bound(tree.begin(), tree.end(), path,
                                        [](const TreeEntry& candidate, const std::string& sought) {
                                            return candidate.path < sought;
                                        });
    if (entry != tree.end() && entry->path == path)
        return &*entry;
    const auto other = std::find_if(tree.begin(), tree.end(), [&](const TreeEntry& candidate) {
        return candidate.path.size() == path.size() && foldCase(candidate.path) == foldCase(path);
    });
    return other != tree.end() ? &*other : nullptr;
}

bool KeyUnderCheck::hasFolder(const std::string& path) const {
    const TreeEntry* const entry = find(path);
    return entry != nullptr && entry->kind == TreeEntry::Kind::Folder;
}

std::string KeyUnderCheck::read(const std::string& path) const {
    const TreeEntry* const entry = find(path);
    return readHostFile((folder / (entry != nullptr ? entry->path : path)).string());
}

std::set<Script> KeyUnderCheck::scripts() const {
    std::set<Script> scripts;
    for (const int32_t number : options.languages)
        scripts.insert(findLanguage(number)->script);
    return scripts;
}
