#include "platform/posix/device.h"

#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>

#include "platform/posix/clock.h"
#include "platform/posix/utf.h"

namespace {

std::string& root() {
    static std::string& folder = *new std::string([] {
        const char* variable = std::getenv("UPDATER_DEVICE");
        return variable != nullptr && *variable != '\0' ? variable : "device";
    }());
    return folder;
}

constexpr std::u16string_view FORBIDDEN = u"<>:\"|?*";

bool isForbidden(char16_t character) {
    return character < 0x20 || FORBIDDEN.find(character) != std::u16string_view::npos;
}

bool isRelative(std::u16string_view path) {
    return path.find_first_of(host::SEPARATORS) != 0;
}

// Whether a folder below the drive of `path` is a link. Paths outside the device folder are the
// host's own, and may.
bool leadsThroughLink(std::string path) {
    const std::string& device = deviceRoot();
    if (path.compare(0, device.size(), device) != 0 || path.size() <= device.size() + 1)
        return false;
    const std::size_t drive = path.find('/', device.size() + 1);
    if (drive == std::string::npos)
        return false;
    for (std::size_t end = path.find('/', drive + 1); end != std::string::npos;
         end = path.find('/', end + 1)) {
        struct stat status {};
        path[end] = '\0';
        if (::lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode))
            return true;
        path[end] = '/';
    }
    return false;
}

}  // namespace

const std::string& deviceRoot() {
    return root();
}

void setDeviceRoot(const std::string& folder) {
    root() = folder;
    host::forgetTimeZone();
}

namespace host {

std::string resolveOnText(LPCWSTR path) {
    const std::u16string_view text(path);
    static const std::string currentFolder = ".";
    const std::string& base = isRelative(text) ? currentFolder : deviceRoot();
    std::string host;
    host.reserve(base.size() + text.size() + 1);
    host = base;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find_first_of(SEPARATORS, start), text.size());
        const std::u16string_view part = text.substr(start, end - start);
        if (part == u"..") {
            if (host.size() > base.size())
                host.erase(host.rfind('/'));
        } else if (!part.empty() && part != u".") {
            host += '/';
            appendUtf8(host, part);
        }
        start = end + 1;
    }
    return host;
}

DWORD resolveName(LPCWSTR path, std::string& host) {
    const std::u16string_view text(path);
    if (text.empty() || text.size() >= MAX_PATH)
        return ERROR_PATH_NOT_FOUND;
    if (std::any_of(text.begin(), text.end(), isForbidden))
        return ERROR_INVALID_NAME;
    host = resolveOnText(path);
    return ERROR_SUCCESS;
}

DWORD resolve(LPCWSTR path, std::string& host) {
    if (const DWORD error = resolveName(path, host))
        return error;
    return leadsThroughLink(host) ? ERROR_ACCESS_DENIED : ERROR_SUCCESS;
}

int openResolved(const std::string& host, int flags, mode_t mode) {
    open_how how{};
    how.flags = static_cast<uint64_t>(flags | O_NOFOLLOW | O_CLOEXEC);
    how.mode = (flags & O_CREAT) != 0 ? mode : 0;
    how.resolve = RESOLVE_NO_SYMLINKS;
    const long file = ::syscall(SYS_openat2, AT_FDCWD, host.c_str(), &how, sizeof how);
    // A link may stand above the drives, where it is no harm; and not every kernel has the call, or
    // allows it.
    if (file >= 0 || (errno != ELOOP && errno != ENOSYS && errno != EPERM))
        return static_cast<int>(file);
    if (leadsThroughLink(host)) {
        errno = ELOOP;
        return -1;
    }
    return ::open(host.c_str(), flags | O_NOFOLLOW | O_CLOEXEC, mode);
}

}  // namespace host
