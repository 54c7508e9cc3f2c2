#include "tools/updatekey/installation.h"

#include <fstream>
#include <stdexcept>

#include "tools/updatekey/key_tree.h"

namespace fs = std::filesystem;

fs::path makerFolderOf(const fs::path& folder) {
    for (const char* const place : {"FlashDisk/VELD", "VELD"})
        if (fs::is_directory(folder / place))
            return folder / place;
    for (const char* const component : {"KSTRL", "ORBUI", "KSTRL_old", "ORBUI_old", "Update"})
        if (fs::is_directory(folder / component))
            return folder;
    throw std::runtime_error(
        folder.string() +
        " is neither a key nor a device: it has no folder FlashDisk/VELD, VELD "
        "or KSTRL");
}

InstalledFiles installedFiles(const fs::path& makerFolder, const std::string& suffix) {
    InstalledFiles files;
    for (const std::string component : {"KSTRL", "ORBUI"}) {
        const fs::path folder = makerFolder / (component + suffix);
        for (const KeyEntry& entry : readTree(folder))
            if (entry.kind == KeyEntry::Kind::file)
                files[component + "/" + entry.path] = {folder / entry.path, entry.size};
    }
    return files;
}

std::string applicationVersion(const fs::path& application) {
    std::ifstream file(application / "version.txt");
    std::string version;
    std::getline(file, version);
    version.erase(version.find_last_not_of(" \t\r") + 1);
    return version;
}
