#include "platform/posix/processes/device_processes.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <cstdlib>

#include "platform/posix/files/device.h"
#include "platform/posix/files/file_status.h"
#include "platform/posix/files/place.h"

namespace host {

namespace {

// The device folder and the flash disk, which may be a link to elsewhere. The host's root never
// counts as the device.
std::vector<FileIdentity> deviceFolders() {
    std::vector<FileIdentity> folders;
    for (const std::string& path : {deviceRoot(), deviceRoot() + "/" + FLASH_DISK})
        if (const FileIdentity folder = identityOf(path);
            folder.exists() && folder != identityOf("/"))
            folders.push_back(folder);
    return folders;
}

bool isBelow(std::string path, const std::vector<FileIdentity>& folders) {
    for (std::size_t end = path.rfind('/'); end != std::string::npos && end > 0;
         end = path.rfind('/')) {
        path.resize(end);
        if (std::find(folders.begin(), folders.end(), identityOf(path)) != folders.end())
            return true;
    }
    return false;
}

// Returns the name of the file that `link` refers to when it lies on the device, otherwise an empty
// text. The kernel reports the file's current path, or the last one of a deleted file.
std::string nameOnDevice(const std::string& link, const std::vector<FileIdentity>& folders) {
    const std::string deletedMark = " (deleted)";
    const Descriptor file(::open(link.c_str(), O_PATH | O_CLOEXEC));
    struct stat status {};
    if (!file.isOpen() || ::fstat(file.number(), &status) != 0)
        return {};
    std::string path = readLink("/proc/self/fd/" + std::to_string(file.number()));
    if (identityOf(path) != FileIdentity{status}) {
        // Deleted, or another file has been mounted over the path.
        const std::size_t end = path.rfind(deletedMark);
        if (end == std::string::npos || end + deletedMark.size() != path.size())
            return {};
        path.resize(end);
    }
    return isBelow(path, folders) ? path.substr(path.rfind('/') + 1) : std::string();
}

// Whether a thread sees files and process ids as this process does.
bool sharesOurView(const std::string& thread) {
    for (const char* const part : {"/ns/mnt", "/ns/pid", "/root"})
        if (const FileIdentity seen = identityOf(thread + part);
            !seen.exists() || seen != identityOf("/proc/self" + std::string(part)))
            return false;
    return true;
}

std::vector<std::string> namesIn(const std::string& folder) {
    return readNames(
        Descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)).number());
}

// Returns the name of the program that process `id` runs when it belongs to the device, otherwise
// an empty text.
std::string nameOfDeviceProcess(const std::string& id, const std::vector<FileIdentity>& folders) {
    const std::string threads = "/proc/" + id + "/task/";
    for (const std::string& number : namesIn(threads)) {
        const std::string thread = threads + number;
        // All threads run the same program. The main thread, which stands for the process, has none
        // once it has ended, while the others may go on.
        if (identityOf(thread + "/exe").exists())
            return sharesOurView(thread) ? nameOnDevice(thread + "/exe", folders) : std::string();
    }
    return {};
}

}  // namespace

std::string readLink(const std::string& path) {
    char target[PATH_MAX];
    const ssize_t length = ::readlink(path.c_str(), target, sizeof target);
    return length > 0 ? std::string(target, static_cast<std::size_t>(length)) : std::string();
}

std::vector<DeviceProcess> deviceProcesses() {
    std::vector<DeviceProcess> processes;
    const std::vector<FileIdentity> folders = deviceFolders();
    for (const std::string& id : namesIn("/proc")) {
        if (id.find_first_not_of("0123456789") != std::string::npos)
            continue;
        const std::string name = nameOfDeviceProcess(id, folders);
        if (!name.empty())
            processes.push_back({static_cast<DWORD>(std::strtoul(id.c_str(), nullptr, 10)), name});
    }
    return processes;
}

DWORD openDeviceProcess(DWORD id, Descriptor& process) {
    process = Descriptor(static_cast<int>(::syscall(SYS_pidfd_open, static_cast<pid_t>(id), 0)));
    if (!process.isOpen())
        return ERROR_INVALID_PARAMETER;
    // When the process can still be signalled afterwards, its id was not reused, and /proc
    // described this process.
    const bool isOurs = !nameOfDeviceProcess(std::to_string(id), deviceFolders()).empty() &&
                        ::syscall(SYS_pidfd_send_signal, process.number(), 0, nullptr, 0) == 0;
    return isOurs ? ERROR_SUCCESS : ERROR_ACCESS_DENIED;
}

}  // namespace host
