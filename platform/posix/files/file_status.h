// The status of a host file in Windows terms, and its identity.
#pragma once

#include <fcntl.h>
#include <sys/stat.h>

#include <string>

#include "platform/posix/win32_api.h"

namespace host {

inline bool isReadOnly(mode_t mode) {
    return S_ISREG(mode) && (mode & S_IWUSR) == 0;
}

inline DWORD attributesOf(mode_t mode) {
    if (S_ISDIR(mode))
        return FILE_ATTRIBUTE_DIRECTORY;
    if (S_ISLNK(mode))
        return FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_REPARSE_POINT;
    return FILE_ATTRIBUTE_ARCHIVE | (isReadOnly(mode) ? FILE_ATTRIBUTE_READONLY : 0);
}

// Whether a listing shows the file. A name that contains a backslash would, used as a path, lead
// elsewhere.
inline bool isListed(const std::string& name, mode_t mode) {
    return name.find('\\') == std::string::npos &&
           (S_ISREG(mode) || S_ISDIR(mode) || S_ISLNK(mode));
}

// Identifies a file of the host, whatever paths lead to it.
struct FileIdentity {
    FileIdentity() = default;
    explicit FileIdentity(const struct stat& status)
        : device(status.st_dev), inode(status.st_ino) {}
    bool exists() const { return inode != 0; }
    bool operator==(const FileIdentity& other) const {
        return device == other.device && inode == other.inode;
    }
    bool operator!=(const FileIdentity& other) const { return !(*this == other); }

    dev_t device = 0;
    ino_t inode = 0;
};

// Follows links. The result does not exist when there is no file at the path.
inline FileIdentity identityOf(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 ? FileIdentity(status) : FileIdentity();
}

// Whether another disk is mounted at a name in a folder.
inline bool isMounted(int folder, const std::string& name) {
    struct statx status {};
    return ::statx(folder, name.c_str(), AT_SYMLINK_NOFOLLOW, 0, &status) == 0 &&
           (status.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0;
}

}  // namespace host
