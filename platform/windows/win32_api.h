// The Win32 API on Windows.
//
// The program uses only calls that Windows CE 8 has. Desktop Windows rejects some uses that CE
// allows; the replacements below adapt them and are not compiled for CE.
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

// Desktop Windows reads and writes the two structures of CreateProcessW that may be null on CE. The
// replacement passes empty ones and closes the handles that are returned.
BOOL createProcessWithRecords(LPCWSTR application, LPWSTR commandLine, SECURITY_ATTRIBUTES* process,
                              SECURITY_ATTRIBUTES* thread, BOOL inherit, DWORD flags,
                              void* environment, LPCWSTR folder, STARTUPINFOW* startup,
                              PROCESS_INFORMATION* information);
#define CreateProcessW createProcessWithRecords

// PROCESSENTRY32 is 564 bytes on CE. Desktop Windows uses another size and fails when dwSize
// differs from it.
BOOL firstProcessOfAnySize(HANDLE snapshot, PROCESSENTRY32W* entry);
BOOL nextProcessOfAnySize(HANDLE snapshot, PROCESSENTRY32W* entry);
#undef Process32First
#undef Process32Next
#define Process32First firstProcessOfAnySize
#define Process32Next nextProcessOfAnySize

// The desktop's headers include access rights that CE does not have.
#undef PROCESS_ALL_ACCESS
#define PROCESS_ALL_ACCESS 0x1F0FFF

// The desktop's runtime decodes a file opened with ",ccs=UTF-16LE" and translates line ends in text
// mode. The replacement opens every file in binary mode, so that all systems read and write the
// same bytes.
std::FILE* openUntranslated(LPCWSTR path, LPCWSTR mode);
#define _wfopen openUntranslated

#endif
