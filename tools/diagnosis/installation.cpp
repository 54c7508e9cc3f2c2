#include "tools/diagnosis/installation.h"

#include <stdexcept>

#include "platform/utf.h"
#include "tools/host/host_file.h"

namespace fs = std::filesystem;

namespace {

fs::path childNamed(const fs::path& folder, const std::string& name) {
    std::error_code error;
    const fs::directory_iterator entries(folder, error);
    if (error == std::errc::permission_denied || error == std::errc::io_error)
        throw std::runtime_error(folder.generic_string() + " cannot be read: " + error.message());
    fs::path found = folder / name;
    for (const fs::directory_entry& entry : entries) {
        const std::string there = entry.path().filename().generic_string();
        if (there == name)
            return entry.path();
        if (host::foldCase(there) == host::foldCase(name))
            found = entry.path();
    }
    return found;
}

}  // namespace

fs::path entryAt(const fs::path& folder, const fs::path& relative) {
    fs::path place = folder;
    for (const fs::path& name : relative)
        if (!name.empty())
            place = childNamed(place, name.generic_string());
    return place;
}

fs::path makerFolderOf(const fs::path& folder) {
    std::string names;
    for (const char* const place : {keylayout::FLASH_ROOT, keylayout::MAKER_FOLDER}) {
        const fs::path name = fs::path(place).relative_path().parent_path();
        fs::path found = entryAt(folder, name);
        if (fs::is_directory(found))
            return found;
        names += name.generic_string() + ", ";
    }
    for (const std::string& name : UPDATE_FOLDERS) {
        if (fs::is_directory(entryAt(folder, name)))
            return folder;
        names += name + (name == UPDATE_FOLDERS.back() ? "" : ", ");
    }
    throw std::runtime_error(folder.generic_string() +
                             " is neither a key nor a device: it has none of the folders " + names);
}

bool isOnKey(const fs::path& makerFolder) {
    return fs::exists(entryAt(makerFolder, keylayout::RELEASE_NOTES));
}

FileSet installedFiles(const fs::path& makerFolder) {
    FileSet files;
    for (const std::string component : {keylayout::APPLICATION, keylayout::GUI})
        files.merge(filesIn(entryAt(makerFolder, component), component + "/"));
    return files;
}

std::string applicationVersion(const fs::path& application) {
    const fs::path file = application / "version.txt";
    const std::string text = fs::is_regular_file(file) ? readHostFile(file.generic_string()) : "";
    const std::string line = text.substr(0, text.find('\n'));
    return line.substr(0, line.find_last_not_of(" \t\r") + 1);
}
