// The processes of the simulated device: those whose executable, a script too, lies below the
// device folder, behind one pseudo entry for the kernel. No other process can be opened, let alone
// ended.

#include <dirent.h>
#include <signal.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <string>
#include <vector>

#include "platform/posix/call_hook.h"
#include "platform/posix/device.h"
#include "platform/posix/last_error.h"
#include "platform/posix/read_file.h"
#include "platform/posix/utf.h"

using host::fail;
using host::refusedByHook;

namespace {

struct DeviceProcess {
    DWORD id;
    std::string name;
};

// What stands behind a HANDLE of this file: a snapshot, or one process held by its descriptor, so
// that its number cannot come to mean another one.
struct ProcessObject {
    std::vector<DeviceProcess> snapshot;
    std::size_t next = 0;
    int process = -1;
};

std::string canonical(const std::string& path) {
    char resolved[PATH_MAX];
    return ::realpath(path.c_str(), resolved) != nullptr ? resolved : std::string();
}

std::string readLink(const std::string& path) {
    char target[PATH_MAX];
    const ssize_t length = ::readlink(path.c_str(), target, sizeof target);
    return length > 0 ? std::string(target, static_cast<std::size_t>(length)) : std::string();
}

std::string baseName(const std::string& path) {
    return path.substr(path.rfind('/') + 1);
}

bool isBelow(const std::string& path, const std::vector<std::string>& folders) {
    return std::any_of(folders.begin(), folders.end(), [&](const std::string& folder) {
        return path.compare(0, folder.size(), folder) == 0 && path[folder.size()] == '/';
    });
}

// The device folder and what its drives lead to.
std::vector<std::string> deviceFolders() {
    std::vector<std::string> folders;
    for (const char* drive : {"", "/FlashDisk"}) {
        const std::string folder = canonical(deviceRoot() + drive);
        if (folder.size() > 1)
            folders.push_back(folder);
    }
    return folders;
}

// A running script: the kernel names the process after it and hands its path to the interpreter, as
// the first argument or behind one of the interpreter's. A program that merely was given the path
// of a file of the device carries a name of its own.
std::string scriptOf(const std::string& process) {
    constexpr std::size_t LONGEST_NAME = 15;
    std::string name = host::readFile(process + "/comm");
    name.erase(name.find_last_not_of('\n') + 1);
    const std::string arguments = host::readFile(process + "/cmdline");
    const std::string program = arguments.substr(0, arguments.find('\0'));
    if (baseName(program).substr(0, LONGEST_NAME) == name)
        return {};
    std::size_t start = program.size() + 1;
    for (int i = 1; i <= 2 && start < arguments.size(); ++i) {
        const std::string argument = arguments.c_str() + start;
        start += argument.size() + 1;
        if (baseName(argument).substr(0, LONGEST_NAME) != name)
            continue;
        const bool absolute = argument[0] == '/';
        return canonical(absolute ? argument : readLink(process + "/cwd") + "/" + argument);
    }
    return {};
}

// The name of the executable of process `id` if it is one of the device's, otherwise empty.
std::string deviceExecutable(const std::string& id, const std::vector<std::string>& folders) {
    const std::string process = "/proc/" + id;
    std::string executable = readLink(process + "/exe");
    const std::string deleted = " (deleted)";
    if (executable.size() > deleted.size() &&
        executable.compare(executable.size() - deleted.size(), deleted.size(), deleted) == 0)
        executable.resize(executable.size() - deleted.size());
    if (!isBelow(executable, folders))
        executable = scriptOf(process);
    return isBelow(executable, folders) ? baseName(executable) : std::string();
}

std::vector<DeviceProcess> deviceProcesses() {
    std::vector<DeviceProcess> processes = {{0, "NK.EXE"}};
    const std::vector<std::string> folders = deviceFolders();
    DIR* proc = ::opendir("/proc");
    if (proc == nullptr)
        return processes;
    while (const dirent* entry = ::readdir(proc)) {
        const std::string id = entry->d_name;
        if (id.find_first_not_of("0123456789") != std::string::npos)
            continue;
        const std::string name = deviceExecutable(id, folders);
        if (!name.empty())
            processes.push_back({static_cast<DWORD>(std::strtoul(id.c_str(), nullptr, 10)), name});
    }
    ::closedir(proc);
    return processes;
}

BOOL nextEntry(HANDLE handle, PROCESSENTRY32* entry) {
    if (entry->dwSize < sizeof *entry)
        return fail(ERROR_INSUFFICIENT_BUFFER);
    auto* object = static_cast<ProcessObject*>(handle);
    if (object->next >= object->snapshot.size())
        return fail(ERROR_NO_MORE_FILES);
    const DeviceProcess& process = object->snapshot[object->next++];
    *entry = {};
    entry->dwSize = sizeof *entry;
    entry->th32ProcessID = process.id;
    const std::u16string name = host::toUtf16(process.name).substr(0, MAX_PATH - 1);
    std::copy(name.begin(), name.end(), entry->szExeFile);
    return TRUE;
}

}  // namespace

HANDLE CreateToolhelp32Snapshot(DWORD flags, DWORD processId) {
    if (refusedByHook("CreateToolhelp32Snapshot", flags, processId))
        return INVALID_HANDLE_VALUE;
    return new ProcessObject{deviceProcesses(), 0, -1};
}

BOOL Process32First(HANDLE snapshot, PROCESSENTRY32* entry) {
    if (refusedByHook("Process32First"))
        return FALSE;
    if (snapshot == INVALID_HANDLE_VALUE || snapshot == nullptr)
        return fail(ERROR_INVALID_HANDLE);
    static_cast<ProcessObject*>(snapshot)->next = 0;
    return nextEntry(snapshot, entry);
}

BOOL Process32Next(HANDLE snapshot, PROCESSENTRY32* entry) {
    if (refusedByHook("Process32Next"))
        return FALSE;
    if (snapshot == INVALID_HANDLE_VALUE || snapshot == nullptr)
        return fail(ERROR_INVALID_HANDLE);
    return nextEntry(snapshot, entry);
}

HANDLE OpenProcess(DWORD access, BOOL inherit, DWORD processId) {
    if (refusedByHook("OpenProcess", access, inherit, processId))
        return nullptr;
    const int process =
        static_cast<int>(::syscall(SYS_pidfd_open, static_cast<pid_t>(processId), 0));
    if (process < 0) {
        fail(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    // Looked at again now that the descriptor holds it.
    if (deviceExecutable(std::to_string(processId), deviceFolders()).empty()) {
        ::close(process);
        fail(ERROR_ACCESS_DENIED);
        return nullptr;
    }
    return new ProcessObject{{}, 0, process};
}

BOOL TerminateProcess(HANDLE process, UINT exitCode) {
    if (refusedByHook("TerminateProcess", exitCode))
        return FALSE;
    const auto* object = static_cast<ProcessObject*>(process);
    if (object == nullptr || process == INVALID_HANDLE_VALUE || object->process < 0)
        return fail(ERROR_INVALID_HANDLE);
    if (::syscall(SYS_pidfd_send_signal, object->process, SIGKILL, nullptr, 0) != 0)
        return fail(ERROR_ACCESS_DENIED);
    return TRUE;
}

// A handle whose close the hook fails is let go all the same: nobody closes it again.
BOOL CloseHandle(HANDLE handle) {
    const bool refused = refusedByHook("CloseHandle");
    if (handle == nullptr || handle == INVALID_HANDLE_VALUE)
        return fail(ERROR_INVALID_HANDLE);
    auto* object = static_cast<ProcessObject*>(handle);
    if (object->process >= 0)
        ::close(object->process);
    delete object;
    return refused ? FALSE : TRUE;
}
