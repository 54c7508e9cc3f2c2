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
#include "platform/posix/utf.h"

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
    if (file >= 0 || errno != ENOENT || (flags & O_CREAT) != 0 || !findOtherCase(folder, name))
        return file;
    return ::openat(folder, name.c_str(), flags, mode);
}

// Changes errno from ENOTDIR to ELOOP when `name` is a link.
void tellLinks(int folder, const std::string& name) {
    struct stat status {};
    if (errno != ENOTDIR)
        return;
    const bool found = ::fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0;
    errno = found && S_ISLNK(status.st_mode) ? ELOOP : ENOTDIR;
}

// Opens a path folder by folder.
int openStepwise(const std::string& hostPath, int flags, mode_t mode) {
    std::size_t at = baseLength(hostPath);
    Descriptor folder(::open(hostPath.substr(0, at).c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    for (bool isDrive = true; folder.isOpen(); isDrive = false) {
        const std::size_t end = std::min(hostPath.find('/', at + 1), hostPath.size());
        const bool isLast = end == hostPath.size();
        std::string name = at == end ? "." : hostPath.substr(at + 1, end - at - 1);
        const int step = isLast ? flags : O_PATH | O_DIRECTORY;
        const int links = isDrive && (step & O_DIRECTORY) != 0 ? 0 : O_NOFOLLOW;
        const int file = openIn(folder.number(), name, step | links | O_CLOEXEC, mode);
        if (file < 0)
            tellLinks(folder.number(), name);
        if (file < 0 || isLast)
            return file;
        folder = Descriptor(file);
        at = end;
    }
    return -1;
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
    const int folder = place.folder.number();
    const auto isThere = [&] {
        return ::fstatat(folder, place.name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0;
    };
    const auto isThereInOtherCase = [&] {
        return which == Case::Any && errno == ENOENT && findOtherCase(folder, place.name) &&
               isThere();
    };
    if (!isThere() && !isThereInOtherCase())
        return windowsError(errno);
    return endsInSeparator(path) && !S_ISDIR(status.st_mode) ? ERROR_INVALID_NAME : ERROR_SUCCESS;
}

int openAt(Place& place, int flags, mode_t mode) {
    return openIn(place.folder.number(), place.name, flags | O_NOFOLLOW | O_CLOEXEC, mode);
}

bool findOtherCase(int folder, std::string& name) {
    std::vector<std::string> names;
    readNames(folder, names);
    const std::string folded = foldCase(name);
    const auto found = std::find_if(names.begin(), names.end(), [&](const std::string& other) {
        return other.size() == name.size() && foldCase(other) == folded;
    });
    if (found == names.end()) {
        errno = ENOENT;
        return false;
    }
    name = *found;
    return true;
}

bool readNames(int folder, std::vector<std::string>& names) {
    const int readable = ::openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    DIR* const entries = readable < 0 ? nullptr : ::fdopendir(readable);
    if (entries == nullptr)
        return false;
    const std::size_t before = names.size();
    errno = 0;
    while (const dirent* entry = ::readdir(entries)) {
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..")
            names.emplace_back(name);
    }
    const int error = errno;
    ::closedir(entries);
    errno = error;
    std::sort(names.begin() + static_cast<std::ptrdiff_t>(before), names.end());
    return error == 0;
}

}  // namespace host
