// FindFirstFileW, FindNextFileW and FindClose. A pattern that ends in "*" finds all entries of a
// folder, one that ends in a name finds that entry; any other pattern finds nothing. Entries are
// sorted by name after "." and "..", so that runs are reproducible. What is mounted anywhere but on
// a drive or on the maker's folder is not listed, because whoever deletes the folder would delete
// what is on another disk.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <vector>

#include "platform/posix/call_hook.h"
#include "platform/posix/clock.h"
#include "platform/posix/files/device.h"
#include "platform/posix/files/file_status.h"
#include "platform/posix/files/place.h"
#include "platform/posix/last_error.h"
#include "platform/utf.h"

using host::fail;
using host::refusedByHook;

namespace {

const std::u16string NO_NAME = u"Not listed, because no path can contain such a name: ";
const std::u16string MOUNTED = u"Not listed, because another disk is mounted there: ";

struct Search {
    host::Descriptor folder;
    std::vector<std::string> names;
    std::size_t next = 0;
    std::string path;  // of the folder on the host
};

DWORD openError(const std::string& path) {
    const int error = errno;
    // ENOTDIR means that the path itself is no folder, or that one of its parents is none.
    if (error == ENOTDIR && host::Descriptor(host::openResolved(path, O_PATH)).isOpen())
        return ERROR_DIRECTORY;
    return error == ENOENT ? ERROR_PATH_NOT_FOUND : host::windowsError(error);
}

// Opens the folder to search and collects the matching names.
DWORD start(std::u16string pattern, Search& search) {
    const std::size_t lastPart = pattern.find_last_of(host::SEPARATORS) + 1;
    const std::u16string last = pattern.substr(lastPart);
    const bool isWild = last.find_first_of(u"*?") != std::u16string::npos;
    // Any valid name can replace the "*" for opening the folder.
    if (isWild)
        std::fill(pattern.begin() + static_cast<std::ptrdiff_t>(lastPart), pattern.end(), u'_');
    std::string hostPath;
    if (const DWORD error = host::resolveName(pattern.c_str(), hostPath))
        return error;
    // A name with a separator after it finds nothing, nor does the root, which has no name.
    if (!isWild && (last.empty() || hostPath == deviceRoot()))
        return ERROR_FILE_NOT_FOUND;
    const std::size_t slash = hostPath.rfind('/');
    search.path = hostPath.substr(0, slash);
    search.folder = host::Descriptor(host::openResolved(search.path, O_PATH | O_DIRECTORY));
    if (!search.folder.isOpen())
        return openError(search.path);
    const int folder = search.folder.number();
    if (last == u"*") {
        search.names = host::readNames(folder);
        search.names.insert(search.names.begin(), {".", ".."});
    } else if (!isWild) {
        search.names = {hostPath.substr(slash + 1)};
        if (::faccessat(folder, search.names[0].c_str(), F_OK, AT_SYMLINK_NOFOLLOW) != 0)
            host::findOtherCase(folder, search.names[0]);
    }
    return ERROR_SUCCESS;
}

FILETIME fileTime(const struct statx_timestamp& time) {
    return host::fileTime({time.tv_sec, static_cast<long>(time.tv_nsec)});
}

// Whether a path of the host lies below the maker's folder of a drive.
bool isBelowMakersFolder(const std::string& path) {
    const std::string& device = deviceRoot();
    return std::count(path.begin(), path.end(), '/') -
               std::count(device.begin(), device.end(), '/') >
           2;
}

// Fills in what is found at the name. Returns false when the name is not listed.
bool fill(Search& search, const std::string& name, WIN32_FIND_DATAW& found) {
    struct statx status {};
    if (::statx(search.folder.number(), name.c_str(), AT_SYMLINK_NOFOLLOW,
                STATX_BASIC_STATS | STATX_BTIME, &status) != 0)
        return false;
    if (!host::isListed(name, status.stx_mode))
        return false;
    if ((status.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0 && name != "..") {
        const std::string path = search.path + (name == "." ? "" : "/" + name);
        if (isBelowMakersFolder(path)) {
            OutputDebugStringW((MOUNTED + host::toUtf16(path)).c_str());
            if (name == ".")
                search.names.clear();
            return false;
        }
    }
    const std::u16string wide = host::toUtf16(name);
    if (wide.size() >= MAX_PATH)
        return false;
    found = {};
    found.dwFileAttributes = host::attributesOf(status.stx_mode);
    // When the file system does not store creation times, the time of the last change is used.
    const bool keepsCreation = (status.stx_mask & STATX_BTIME) != 0;
    found.ftCreationTime = fileTime(keepsCreation ? status.stx_btime : status.stx_mtime);
    found.ftLastAccessTime = fileTime(status.stx_atime);
    found.ftLastWriteTime = fileTime(status.stx_mtime);
    if (!S_ISDIR(status.stx_mode)) {
        const uint64_t size = status.stx_size;
        found.nFileSizeHigh = static_cast<DWORD>(size >> 32);
        found.nFileSizeLow = static_cast<DWORD>(size & 0xFFFFFFFF);
    }
    std::copy(wide.begin(), wide.end(), found.cFileName);
    return true;
}

bool advance(Search& search, WIN32_FIND_DATAW& found) {
    while (search.next < search.names.size()) {
        if (fill(search, search.names[search.next++], found))
            return true;
    }
    return false;
}

}  // namespace

HANDLE FindFirstFileW(LPCWSTR pattern, WIN32_FIND_DATAW* found) {
    if (refusedByHook("FindFirstFileW", pattern))
        return INVALID_HANDLE_VALUE;
    auto* search = new Search;
    DWORD error = start(pattern, *search);
    if (error == ERROR_SUCCESS && !advance(*search, *found))
        error = ERROR_FILE_NOT_FOUND;
    if (error == ERROR_SUCCESS)
        return search;
    delete search;
    // The caller sees an empty folder; whoever runs the program is told.
    if (error == ERROR_INVALID_NAME)
        OutputDebugStringW((NO_NAME + std::u16string(pattern)).c_str());
    fail(error);
    return INVALID_HANDLE_VALUE;
}

BOOL FindNextFileW(HANDLE handle, WIN32_FIND_DATAW* found) {
    if (refusedByHook("FindNextFileW"))
        return FALSE;
    return advance(*static_cast<Search*>(handle), *found) || fail(ERROR_NO_MORE_FILES);
}

// Frees the search even when the hook makes the call fail, because callers do not retry.
BOOL FindClose(HANDLE handle) {
    const bool refused = refusedByHook("FindClose");
    if (handle == nullptr || handle == INVALID_HANDLE_VALUE)
        return fail(ERROR_INVALID_HANDLE);
    delete static_cast<Search*>(handle);
    return refused ? FALSE : TRUE;
}
