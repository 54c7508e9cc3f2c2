#include "platform/win32.h"

#ifndef UNDER_CE

// The names below mean the system's own functions.
#undef CreateProcessW
#undef Process32First
#undef Process32Next
#undef _wfopen

BOOL createProcessWithRecords(LPCWSTR application, LPWSTR commandLine, SECURITY_ATTRIBUTES* process,
                              SECURITY_ATTRIBUTES* thread, BOOL inherit, DWORD flags,
                              void* environment, LPCWSTR folder, STARTUPINFOW* startup,
                              PROCESS_INFORMATION* information) {
    STARTUPINFOW emptyStartup{};
    emptyStartup.cb = sizeof emptyStartup;
    PROCESS_INFORMATION started{};
    const BOOL result =
        CreateProcessW(application, commandLine, process, thread, inherit, flags, environment,
                       folder, startup != nullptr ? startup : &emptyStartup, &started);
    if (result == FALSE)
        return FALSE;
    if (information != nullptr) {
        *information = started;
    } else {
        CloseHandle(started.hThread);
        CloseHandle(started.hProcess);
    }
    return TRUE;
}

BOOL firstProcessOfAnySize(HANDLE snapshot, PROCESSENTRY32W* entry) {
    entry->dwSize = sizeof *entry;
    return Process32FirstW(snapshot, entry);
}

BOOL nextProcessOfAnySize(HANDLE snapshot, PROCESSENTRY32W* entry) {
    entry->dwSize = sizeof *entry;
    return Process32NextW(snapshot, entry);
}

std::FILE* openUntranslated(LPCWSTR path, LPCWSTR mode) {
    const WCHAR plainMode[] = {mode[0], TEXT('b'), TEXT('\0')};
    return _wfopen(path, plainMode);
}

#endif
