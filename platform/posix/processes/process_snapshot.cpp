// The process calls. A snapshot lists the processes of the simulated device, after one entry for
// the kernel. No other process can be opened or ended.

#include <signal.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "platform/posix/call_hook.h"
#include "platform/posix/last_error.h"
#include "platform/posix/processes/device_processes.h"
#include "platform/utf.h"

using host::fail;
using host::refusedByHook;

namespace {

// The object of a HANDLE: a snapshot, or a process held by its descriptor, which keeps referring to
// it when the process id is reused.
struct ProcessObject {
    std::vector<host::DeviceProcess> snapshot;
    std::size_t next = 0;
    host::Descriptor process;
};

BOOL nextEntry(HANDLE handle, PROCESSENTRY32* entry) {
    if (entry->dwSize < sizeof *entry)
        return fail(ERROR_INSUFFICIENT_BUFFER);
    auto* object = static_cast<ProcessObject*>(handle);
    if (object->next >= object->snapshot.size())
        return fail(ERROR_NO_MORE_FILES);
    const host::DeviceProcess& process = object->snapshot[object->next++];
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
    std::vector<host::DeviceProcess> processes = host::deviceProcesses();
    processes.insert(processes.begin(), {0, "NK.EXE"});
    return new ProcessObject{processes, 0, host::Descriptor()};
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
    host::Descriptor process;
    if (const DWORD error = host::openDeviceProcess(processId, process)) {
        fail(error);
        return nullptr;
    }
    return new ProcessObject{{}, 0, std::move(process)};
}

BOOL TerminateProcess(HANDLE process, UINT exitCode) {
    if (refusedByHook("TerminateProcess", exitCode))
        return FALSE;
    const auto* object = static_cast<ProcessObject*>(process);
    if (object == nullptr || process == INVALID_HANDLE_VALUE || !object->process.isOpen())
        return fail(ERROR_INVALID_HANDLE);
    if (::syscall(SYS_pidfd_send_signal, object->process.number(), SIGKILL, nullptr, 0) != 0)
        return fail(ERROR_ACCESS_DENIED);
    return TRUE;
}

// Frees the handle even when the hook makes the call fail, because callers do not retry.
BOOL CloseHandle(HANDLE handle) {
    const bool refused = refusedByHook("CloseHandle");
    if (handle == nullptr || handle == INVALID_HANDLE_VALUE)
        return fail(ERROR_INVALID_HANDLE);
    delete static_cast<ProcessObject*>(handle);
    return refused ? FALSE : TRUE;
}
