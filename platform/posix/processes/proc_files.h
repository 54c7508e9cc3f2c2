// Files as /proc shows them.
#pragma once

#include <sys/stat.h>

#include <string>

namespace host {

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
FileIdentity identityOf(const std::string& path);

// Returns the target of a link; empty when there is none.
std::string readLink(const std::string& path);

}  // namespace host
