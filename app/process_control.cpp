#include "app/process_control.h"

#include "platform/win32.h"
#include "support/text.h"

namespace {

// The size of the record on the instrument.
constexpr DWORD PROCESS_ENTRY_SIZE = 564;

void terminateProcess(DWORD id) {
    // A process that cannot be opened or ended is left running, and nothing is told: the update
    // goes on, and a file that it holds shows in the log. The null handle of a failed open is
    // refused by the two calls below.
    const HANDLE process = OpenProcess(PROCESS_ALL_ACCESS, FALSE, id);
    if (TerminateProcess(process, 0) == 0)
        GetLastError();
    CloseHandle(process);
}

}  // namespace

void terminateProcessByName(const std::string& name) {
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    PROCESSENTRY32 entry{};
    entry.dwSize = PROCESS_ENTRY_SIZE;
    // The first entry is never looked at: it is the kernel's own process.
    if (Process32First(snapshot, &entry) == 1) {
        while (Process32Next(snapshot, &entry) == 1) {
            if (narrow(entry.szExeFile) == name)
                terminateProcess(entry.th32ProcessID);
        }
    }
    CloseHandle(snapshot);
}
