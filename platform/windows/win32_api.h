// The Win32 calls on Windows: the system's own.
//
// The program asks nothing of them that Windows CE 8 does not have. Desktop Windows refuses some
// of the instrument's ways; what is defined below takes them there, and CE never sees it.
#pragma once

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN 1
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef UNICODE
#define UNICODE
#endif
// Order matters: the second is written against the types of the first.
// clang-format off
#include <windows.h>
#include <tlhelp32.h>
// clang-format on

#include <cstdint>
#include <cstdio>

#ifndef UNDER_CE

// The desktop reads and writes the two records of CreateProcessW that may be null on CE: it gets
// empty ones, and the handles that come back are closed.
BOOL createProcessWithRecords(LPCWSTR application, LPWSTR commandLine, SECURITY_ATTRIBUTES* process,
                              SECURITY_ATTRIBUTES* thread, BOOL inherit, DWORD flags,
                              void* environment, LPCWSTR folder, STARTUPINFOW* startup,
                              PROCESS_INFORMATION* information);
#define CreateProcessW createProcessWithRecords

// The desktop's record of a process has another size than the 564 bytes of CE, and is refused when
// it does not say so.
BOOL firstProcessOfAnySize(HANDLE snapshot, PROCESSENTRY32W* entry);
BOOL nextProcessOfAnySize(HANDLE snapshot, PROCESSENTRY32W* entry);
#undef Process32First
#undef Process32Next
#define Process32First firstProcessOfAnySize
#define Process32Next nextProcessOfAnySize

// The desktop's headers ask for rights that CE does not know.
#undef PROCESS_ALL_ACCESS
#define PROCESS_ALL_ACCESS 0x1F0FFF

// The desktop's runtime decodes a file that is opened with ",ccs=UTF-16LE" even when its bytes are
// asked for, and turns line ends into two characters. Here all files are opened as they are, so
// that every system writes and reads the same bytes.
std::FILE* openUntranslated(LPCWSTR path, LPCWSTR mode);
#define _wfopen openUntranslated

#endif
