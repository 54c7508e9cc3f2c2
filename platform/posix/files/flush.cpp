#include "platform/posix/files/flush.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <vector>

#include "platform/posix/files/descriptor.h"
#include "platform/posix/last_error.h"

namespace host {
namespace {

struct Disk {
    dev_t device;
    Descriptor folder;
    DWORD failure = ERROR_SUCCESS;
};

std::vector<Disk>& watchedDisks() {
    static auto& disks = *new std::vector<Disk>;
    return disks;
}

Descriptor openFolder(int at, const char* path) {
    return Descriptor(::openat(at, path, O_RDONLY | O_DIRECTORY | O_CLOEXEC));
}

Disk& diskOf(int folder) {
    struct stat status {};
    ::fstat(folder, &status);
    auto& disks = watchedDisks();
    const auto known = std::find_if(disks.begin(), disks.end(),
                                    [&](const Disk& disk) { return disk.device == status.st_dev; });
    if (known != disks.end())
        return *known;
    disks.push_back({status.st_dev, openFolder(folder, ".")});
    return disks.back();
}

bool flush(const Descriptor& folder, int (*call)(int)) {
    // EINVAL: the file system has nothing to flush for a folder.
    return folder.isOpen() && (call(folder.number()) == 0 || errno == EINVAL);
}

DWORD flush(Disk& disk, const Descriptor& folder, int (*call)(int)) {
    if (disk.failure == ERROR_SUCCESS && !flush(folder, call))
        disk.failure = windowsError(errno);
    return disk.failure;
}

}  // namespace

void watchDisk(int folder) {
    diskOf(folder);
}

// One call for all files; flushing each file would wait for the disk once per file.
DWORD flushDisk(int folder) {
    Disk& disk = diskOf(folder);
    return flush(disk, disk.folder, ::syncfs);
}

DWORD flushFolder(int folder) {
    return flush(diskOf(folder), openFolder(folder, "."), ::fsync);
}

bool flushFolderOf(const std::string& path) {
    const std::size_t end = path.rfind('/');
    return flush(
        openFolder(AT_FDCWD, end == std::string::npos ? "." : path.substr(0, end + 1).c_str()),
        ::fsync);
}

void forgetDisks() {
    watchedDisks().clear();
}

}  // namespace host
