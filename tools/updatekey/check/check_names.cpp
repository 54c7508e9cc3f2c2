// Checks for names that FAT32, the device's narrow strings or its path buffers cannot hold.

#include <cstring>
#include <map>

#include "support/file_util.h"
#include "support/path_constants.h"
#include "tools/updatekey/check/check.h"
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

void checkNames(const KeyUnderCheck& key, CheckReport& report) {
    Findings& findings = report.findings;
    std::map<std::string, std::string> byFoldedPath;
    for (const TreeEntry& entry : key.tree) {
        const auto [other, isNew] = byFoldedPath.emplace(foldCase(entry.path), entry.path);
        if (!isNew)
            addError(findings, "case-clash", entry.path,
                     "differs from " + other->second + " only in case; FAT32 cannot hold both");
        const std::string name = nameOf(entry.path);
        if (!isFatName(name))
            addError(findings, "name-not-fat", entry.path, "FAT32 cannot hold this name");
        if (entry.size > FAT32_FILE_LIMIT)
            addError(findings, "file-too-large", entry.path,
                     "FAT32 can hold only files below 4 GB");
        if (!startsWith(entry.path, keylayout::MAKER_FOLDER))
            continue;
        if (!isLatin1(name))
            addError(findings, "name-not-latin1", entry.path,
                     "has characters outside Latin-1; the device reads them as \"?\" and does not "
                     "copy the file");
        if (longestDevicePath(entry.path) > MAX_PATH_LENGTH)
            addError(
                findings, "path-too-long", entry.path,
                "has more than " + std::to_string(MAX_PATH_LENGTH) + " characters on the device");
    }
}
