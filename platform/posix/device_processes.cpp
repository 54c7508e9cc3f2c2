#include "platform/posix/device_processes.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>

#include "platform/posix/descriptor.h"
#include "platform/posix/device.h"
#include "platform/posix/proc_files.h"
#include "platform/posix/read_file.h"
#include "platform/posix/running_script.h"

namespace host {

namespace {

// The device folder and the flash disk, which may be a link. The host's root is never the device.
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

// The name of the file that `link` leads to if it lies on the device, otherwise empty. The kernel
// tells where the file lies now; a file that is gone was last there.
std::string nameOnDevice(const std::string& link, const std::vector<FileIdentity>& folders) {
    const Descriptor file(::open(link.c_str(), O_PATH | O_CLOEXEC));
    struct stat status {};
    if (!file.isOpen() || ::fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode))
        return {};
    std::string path = readLink("/proc/self/fd/" + std::to_string(file.number()));
    // Something else may be mounted at the place by now.
    if (identityOf(path) != FileIdentity{status} && !removeDeletedMark(path))
        return {};
    return isBelow(path, folders) ? baseName(path) : std::string();
}

// The files that a process finds and the numbers that it knows processes by.
struct View {
    explicit View(const std::string& process)
        : parts{identityOf(process + "/ns/mnt"), identityOf(process + "/ns/pid"),
                identityOf(process + "/root")} {}
    bool isOurs() const {
        static const View ours("/proc/self");
        return parts == ours.parts && parts[0].exists() && parts[1].exists();
    }
    std::array<FileIdentity, 3> parts;
};

// The name of what process `id` runs if it is one of the device's, otherwise empty.
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

// The number of the process behind a descriptor, as /proc has it; negative once it is gone.
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
    // The look at /proc was one at this process if the number still means it afterwards.
    if (nameOfDeviceProcess(std::to_string(id), deviceFolders()).empty() ||
        numberOf(process) != static_cast<long>(id)) {
        ::close(process);
        errno = EPERM;
        return -1;
    }
    return process;
}

}  // namespace host
