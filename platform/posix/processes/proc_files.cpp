#include "platform/posix/processes/proc_files.h"

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

}  // namespace host
