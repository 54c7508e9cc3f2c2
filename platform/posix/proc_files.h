// Files as /proc shows them: which one a link leads to, and where it lies.
#pragma once

#include <sys/stat.h>

#include <string>
#include <vector>

namespace host {

// One file of the host, whatever its paths are.
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

// Links are followed. Does not exist when there is nothing.
FileIdentity identityOf(const std::string& path);

// The text of a link, empty when there is none.
std::string readLink(const std::string& path);

// Takes away what the kernel puts behind the path of a file that is gone. Returns whether it was
// there.
bool removeDeletedMark(std::string& path);

std::string baseName(const std::string& path);

// The entries of a folder in any order; none when it cannot be read.
std::vector<std::string> namesIn(const std::string& folder);

}  // namespace host
