#include "app/process_control.h"

#include "platform/win32.h"
#include "support/text.h"

namespace {

// The size of PROCESSENTRY32 on the instrument.
constexpr DWORD PROCESS_ENTRY_SIZE = 564;

void terminateProcess(DWORD id) {
    // Failures are ignored: the update continues, and a file that the process still has open causes
    // an error in the log. When OpenProcess fails, the two calls below receive a null handle and
    // fail.
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
    // The first entry is the kernel's own process and is never compared.
    if (Process32First(snapshot, &entry) == 1) {
        while (Process32Next(snapshot, &entry) == 1) {
            if (narrow(entry.szExeFile) == name)
                terminateProcess(entry.th32ProcessID);
        }
    }
    CloseHandle(snapshot);
}
