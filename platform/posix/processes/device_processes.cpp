#include "platform/posix/processes/device_processes.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>

#include "platform/posix/files/descriptor.h"
#include "platform/posix/files/device.h"
#include "platform/posix/files/read_file.h"
#include "platform/posix/processes/proc_files.h"
#include "platform/posix/processes/running_script.h"

namespace host {

namespace {

// The device folder and the flash disk, which may be a link to elsewhere. The host's root never
// counts as the device.
std::vector<FileIdentity> deviceFolders() {
    std::vector<FileIdentity> folders = {identityOf(deviceRoot()),
                                         identityOf(deviceRoot() + "/FlashDisk")};
    folders.erase(std::remove_if(folders.begin(), folders.end(),
                                 [](FileIdentity folder) {
                                     return !folder.exists() || folder == identityOf("/");
                                 }),
                  folders.end());
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
    const Descriptor file(::open(link.c_str(), O_PATH | O_CLOEXEC));
    struct stat status {};
    if (!file.isOpen() || ::fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode))
        return {};
    std::string path = readLink("/proc/self/fd/" + std::to_string(file.number()));
    // Another file may have been mounted over the path.
    if (identityOf(path) != FileIdentity{status} && !removeDeletedMark(path))
        return {};
    return isBelow(path, folders) ? baseName(path) : std::string();
}

// The namespaces in which a process sees files and process ids.
struct View {
    explicit View(const std::string& process)
        : parts{identityOf(process + "/ns/mnt"), identityOf(process + "/ns/pid"),
                identityOf(process + "/root")} {}
    bool isOurs() const {
        static const View OURS("/proc/self");
        return parts == OURS.parts && parts[0].exists() && parts[1].exists();
    }
    std::array<FileIdentity, 3> parts;
};

// Returns the name of the program or script that process `id` runs when it belongs to the device,
// otherwise an empty text.
std::string nameOfDeviceProcess(const std::string& id, const std::vector<FileIdentity>& folders) {
    const std::string process = "/proc/" + id;
    if (!View(process).isOurs())
        return {};
    std::string name = nameOnDevice(process + "/exe", folders);
    const std::vector<std::string> arguments = argumentsOf(process);
    for (std::size_t i = 1; name.empty() && i < arguments.size() && i <= LAST_SCRIPT_ARGUMENT;
         ++i) {
        const std::string script = fileOfArgument(process, arguments[i]);
        name = nameOnDevice(script, folders);
        if (!name.empty() &&
            !isRunBy(process, script, std::vector<std::string>(&arguments[1], &arguments[i])))
            name.clear();
    }
    return name;
}

// Returns the process id behind a process descriptor, as /proc reports it; negative when the
// process has ended.
long numberOf(int process) {
    const std::string information = readFile("/proc/self/fdinfo/" + std::to_string(process));
    const std::string label = "\nPid:";
    const std::size_t at = information.find(label);
    return at == std::string::npos ? -1 : std::strtol(&information[at + label.size()], nullptr, 10);
}

}  // namespace

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

int openDeviceProcess(DWORD id) {
    const int process = static_cast<int>(::syscall(SYS_pidfd_open, static_cast<pid_t>(id), 0));
    if (process < 0) {
        errno = ESRCH;
        return -1;
    }
    // When the id still means the same process afterwards, /proc described that process.
    if (nameOfDeviceProcess(std::to_string(id), deviceFolders()).empty() ||
        numberOf(process) != static_cast<long>(id)) {
        ::close(process);
        errno = EPERM;
        return -1;
    }
    return process;
}

}  // namespace host
