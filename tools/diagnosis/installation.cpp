#include "tools/diagnosis/installation.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "platform/posix/files/read_file.h"
#include "tools/host/key_tree.h"
#include "update/key_layout.h"

namespace fs = std::filesystem;

fs::path makerFolderOf(const fs::path& folder) {
    for (const char* const place : {"FlashDisk/VELD", "VELD"})
        if (fs::is_directory(folder / place))
            return folder / place;
    for (const char* const name : UPDATE_FOLDERS)
        if (fs::is_directory(folder / name))
            return folder;
    throw std::runtime_error(
        folder.string() +
        " is neither a key nor a device: it has none of the folders FlashDisk/VELD, VELD, KSTRL, "
        "KSTRL_old, ORBUI, ORBUI_old and Update");
}

InstalledFiles installedFiles(const fs::path& makerFolder) {
    InstalledFiles files;
    for (const std::string component : {keylayout::APPLICATION, keylayout::GUI}) {
        const fs::path folder = makerFolder / component;
        for (const KeyEntry& entry : readTree(folder))
            if (entry.kind == KeyEntry::Kind::File)
                files[component + "/" + entry.path] = {folder / entry.path, entry.size};
    }
    return files;
}

bool sameContent(const InstalledFile& a, const InstalledFile& b) {
    if (a.size != b.size)
        return false;
    std::ifstream first(a.file, std::ios::binary);
    std::ifstream second(b.file, std::ios::binary);
    if (!first || !second)
        throw std::runtime_error("cannot read " + (first ? b : a).file.string());
    return std::equal(std::istreambuf_iterator<char>(first), std::istreambuf_iterator<char>(),
                      std::istreambuf_iterator<char>(second));
}

std::string applicationVersion(const fs::path& application) {
    const std::string text = host::readFile(application / "version.txt");
    const std::string line = text.substr(0, text.find('\n'));
    return line.substr(0, line.find_last_not_of(" \t\r") + 1);
}
