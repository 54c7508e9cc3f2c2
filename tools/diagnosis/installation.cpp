#include "tools/diagnosis/installation.h"

#include <stdexcept>

#include "platform/posix/files/read_file.h"
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

FileSet installedFiles(const fs::path& makerFolder) {
    FileSet files;
    for (const std::string component : {keylayout::APPLICATION, keylayout::GUI})
        files.merge(filesIn(makerFolder / component, component + "/"));
    return files;
}

std::string applicationVersion(const fs::path& application) {
    const std::string text = host::readFile(application / "version.txt");
    const std::string line = text.substr(0, text.find('\n'));
    return line.substr(0, line.find_last_not_of(" \t\r") + 1);
}
