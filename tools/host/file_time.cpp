#include "tools/host/file_time.h"

#include <algorithm>

#include "tools/host/folder_tree.h"

std::time_t newestChange(const std::filesystem::path& folder) {
    std::time_t newest = 0;
    for (const TreeEntry& entry : readTree(folder))
        if (entry.kind == TreeEntry::Kind::File)
            newest = std::max(newest, changeTime(folder / entry.path));
    return newest;
}
