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

Descriptor readable(int folder) {
    return Descriptor(::openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
}

Disk& diskOf(int folder) {
    struct stat status {};
    ::fstat(folder, &status);
    auto& disks = watchedDisks();
    const auto known = std::find_if(disks.begin(), disks.end(),
                                    [&](const Disk& disk) { return disk.device == status.st_dev; });
    if (known != disks.end())
        return *known;
    disks.push_back({status.st_dev, readable(folder)});
    return disks.back();
}

DWORD flush(Disk& disk, const Descriptor& folder, int (*call)(int)) {
    if (disk.failure != ERROR_SUCCESS)
        return disk.failure;
    // EINVAL: the file system has nothing to flush for a folder.
    if (!folder.isOpen() || (call(folder.number()) != 0 && errno != EINVAL))
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
    return flush(diskOf(folder), readable(folder), ::fsync);
}

void forgetDisks() {
    watchedDisks().clear();
}

}  // namespace host
