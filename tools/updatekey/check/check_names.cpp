// Checks for names that FAT32, the device's narrow strings or its path buffers cannot hold.

#include <cstring>
#include <map>

#include "support/file_util.h"
#include "support/path_constants.h"
#include "tools/updatekey/check/checks.h"
#include "tools/updatekey/check/names.h"
#include "update/key_layout.h"

namespace {

// Returns the longer of the two paths that a file of the key has on the device.
std::size_t longestDevicePath(const std::string& path) {
    const std::size_t onKey = std::strlen(keylayout::USB_ROOT) + deviceLength(path);
    const std::size_t staged =
        (std::string(keylayout::FLASH_ROOT) + keylayout::STAGING + PATH_SEPARATOR).size() +
        deviceLength(path.substr(std::strlen(keylayout::MAKER_FOLDER)));
    return std::max(onKey, staged);
}

}  // namespace

void checkNames(KeyUnderCheck& key) {
    std::map<std::string, std::string> byFoldedPath;
    for (const TreeEntry& entry : key.tree) {
        const auto [other, isNew] = byFoldedPath.emplace(foldCase(entry.path), entry.path);
        if (!isNew)
            key.add("case-clash", entry.path,
                    "differs from " + other->second + " only in case; FAT32 cannot hold both");
        const std::string name = nameOf(entry.path);
        if (!isFatName(name))
            key.add("name-not-fat", entry.path, "FAT32 cannot hold this name");
        if (entry.size > FAT32_FILE_LIMIT)
            key.add("file-too-large", entry.path, "FAT32 can hold only files below 4 GB");
        if (!startsWith(entry.path, keylayout::MAKER_FOLDER))
            continue;
        if (entry.kind != TreeEntry::Kind::File && entry.kind != TreeEntry::Kind::Folder)
            key.add("not-a-file", entry.path,
                    "is neither a file nor a folder; FAT32 and the device support nothing else");
        if (!isLatin1(name))
            key.add("name-not-latin1", entry.path,
                    "has characters outside Latin-1; the device reads them as \"?\" and does not "
                    "copy the file");
        if (longestDevicePath(entry.path) > MAX_PATH_LENGTH)
            key.add(
                "path-too-long", entry.path,
                "has more than " + std::to_string(MAX_PATH_LENGTH) + " characters on the device");
    }
    for (const auto& [folded, path] : byFoldedPath) {
        const std::string shortName = shortNameOf(nameOf(folded));
        const auto other =
            byFoldedPath.find(folded.substr(0, folded.size() - nameOf(folded).size()) + shortName);
        if (!shortName.empty() && other != byFoldedPath.end())
            key.add("short-name-clash", other->second,
                    "is the short name that FAT can give to " + nameOf(path) +
                        ", and one of them would replace the other; rename it");
    }
}
