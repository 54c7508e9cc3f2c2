#include "platform/posix/files/place.h"

#include <dirent.h>
#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "platform/posix/files/device.h"
#include "platform/posix/last_error.h"
#include "platform/utf.h"

namespace host {
namespace {

// Returns the length of the part before the first drive: the device folder, or the current folder
// for a path relative to it.
std::size_t baseLength(const std::string& hostPath) {
    const std::string& device = deviceRoot();
    const bool isOfDevice = hostPath.compare(0, device.size(), device) == 0 &&
                            (hostPath.size() == device.size() || hostPath[device.size()] == '/');
    return isOfDevice ? device.size() : 1;
}

// Opens `name` in a folder. When it does not exist and must not be created, opens one that differs
// in case.
int openIn(int folder, std::string& name, int flags, mode_t mode) {
    const int file = ::openat(folder, name.c_str(), flags, mode);
    if (file >= 0 || errno != ENOENT || (flags & O_CREAT) != 0)
        return file;
    findOtherCase(folder, name);
    return ::openat(folder, name.c_str(), flags, mode);
}

bool isLink(int folder, const std::string& name) {
    struct stat status {};
    return ::fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 &&
           S_ISLNK(status.st_mode);
}

// Opens a path folder by folder, from the device folder or the current folder on.
int openStepwise(const std::string& hostPath, int flags, mode_t mode) {
    const std::size_t base = baseLength(hostPath);
    if (hostPath.size() == base)
        return ::open(hostPath.c_str(), flags | O_CLOEXEC);
    const std::size_t slash = hostPath.rfind('/');
    const Descriptor folder(openStepwise(hostPath.substr(0, slash), O_PATH | O_DIRECTORY, 0));
    if (!folder.isOpen())
        return -1;
    std::string name = hostPath.substr(slash + 1);
    const bool isDrive = slash == base && (flags & O_DIRECTORY) != 0;
    const int links = isDrive ? 0 : O_NOFOLLOW;
    const int file = openIn(folder.number(), name, flags | links | O_CLOEXEC, mode);
    if (file < 0 && errno == ENOTDIR && isLink(folder.number(), name))
        errno = ELOOP;
    return file;
}

}  // namespace

int openResolved(const std::string& hostPath, int flags, mode_t mode) {
    open_how how{};
    how.flags = static_cast<uint64_t>(flags | O_NOFOLLOW | O_CLOEXEC);
    how.mode = (flags & O_CREAT) != 0 ? mode : 0;
    how.resolve = RESOLVE_NO_SYMLINKS;
    const long file = ::syscall(SYS_openat2, AT_FDCWD, hostPath.c_str(), &how, sizeof how);
    // The kernel also refuses paths that are allowed: through a drive or a device folder that is a
    // link, or with names that differ in case. Some kernels lack the call or forbid it.
    const bool mayOpen = file < 0 && (errno == ELOOP || errno == ENOTDIR || errno == ENOENT ||
                                      errno == ENOSYS || errno == EPERM);
    return mayOpen ? openStepwise(hostPath, flags, mode) : static_cast<int>(file);
}

DWORD locate(LPCWSTR path, Place& place) {
    std::string hostPath;
    if (const DWORD error = resolveName(path, hostPath))
        return error;
    const std::size_t end =
        hostPath.size() == baseLength(hostPath) ? hostPath.size() : hostPath.rfind('/');
    place.name = end == hostPath.size() ? "." : hostPath.substr(end + 1);
    hostPath.resize(end);
    place.folder = Descriptor(openResolved(hostPath, O_PATH | O_DIRECTORY));
    if (place.folder.isOpen())
        return ERROR_SUCCESS;
    return errno == ENOENT ? ERROR_PATH_NOT_FOUND : windowsError(errno);
}

DWORD find(LPCWSTR path, Place& place, struct stat& status, Case which) {
    if (const DWORD error = locate(path, place))
        return error;
    const auto isThere = [&] {
        return ::fstatat(place.folder.number(), place.name.c_str(), &status, AT_SYMLINK_NOFOLLOW) ==
               0;
    };
    const bool found = isThere() || (errno == ENOENT && which == Case::Any &&
                                     findOtherCase(place.folder.number(), place.name) && isThere());
    if (!found)
        return windowsError(errno);
    return endsInSeparator(path) && !S_ISDIR(status.st_mode) ? ERROR_INVALID_NAME : ERROR_SUCCESS;
}

int openAt(Place& place, int flags, mode_t mode) {
    return openIn(place.folder.number(), place.name, flags | O_NOFOLLOW | O_CLOEXEC, mode);
}

bool findOtherCase(int folder, std::string& name) {
    const std::string folded = foldCase(name);
    for (const std::string& other : readNames(folder))
        if (other.size() == name.size() && foldCase(other) == folded) {
            name = other;
            return true;
        }
    return false;
}

std::vector<std::string> readNames(int folder) {
    std::vector<std::string> names;
    const int readable = ::openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    DIR* const entries = readable < 0 ? nullptr : ::fdopendir(readable);
    if (entries == nullptr)
        return names;
    while (const dirent* entry = ::readdir(entries)) {
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..")
            names.emplace_back(name);
    }
    ::closedir(entries);
    std::sort(names.begin(), names.end());
    return names;
}

DWORD windowsError(int error, const std::string& hostPath) {
    const auto hasFolder = [&] {
        const std::string folder = hostPath.substr(0, hostPath.rfind('/'));
        return Descriptor(openResolved(folder, O_PATH | O_DIRECTORY)).isOpen();
    };
    return error == ENOENT && !hasFolder() ? ERROR_PATH_NOT_FOUND : windowsError(error);
}

}  // namespace host
