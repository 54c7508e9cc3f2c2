#include "platform/posix/processes/proc_files.h"

#include <dirent.h>
#include <unistd.h>

#include <climits>

namespace host {

FileIdentity identityOf(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 ? FileIdentity(status) : FileIdentity();
}

std::string readLink(const std::string& path) {
    char target[PATH_MAX];
    const ssize_t length = ::readlink(path.c_str(), target, sizeof target);
    return length > 0 ? std::string(target, static_cast<std::size_t>(length)) : std::string();
}

std::string baseName(const std::string& path) {
    return path.substr(path.rfind('/') + 1);
}

std::vector<std::string> namesIn(const std::string& folder) {
    std::vector<std::string> names;
    DIR* const entries = ::opendir(folder.c_str());
    if (entries == nullptr)
        return names;
    while (const dirent* entry = ::readdir(entries))
        names.emplace_back(entry->d_name);
    ::closedir(entries);
    return names;
}

}  // namespace host
