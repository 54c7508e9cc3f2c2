// Process calls without a process to act on: the snapshot's shape and the refusals.

#include <gtest/gtest.h>

#include "platform/win32.h"
#include "tests/helpers/device_folder.h"

namespace {

TEST(Processes, TheKernelComesFirst) {
    const DeviceFolder device;
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    ASSERT_NE(snapshot, INVALID_HANDLE_VALUE);
    PROCESSENTRY32 entry{};
    entry.dwSize = sizeof entry;
    EXPECT_EQ(Process32First(snapshot, &entry), TRUE);
    // Wine's list has no kernel in it.
    if (!underWine()) {
        EXPECT_EQ(entry.th32ProcessID, DWORD{0});
    }
    while (Process32Next(snapshot, &entry))
        EXPECT_NE(entry.th32ProcessID, DWORD{0});
    EXPECT_EQ(GetLastError(), DWORD{18});
    EXPECT_TRUE(CloseHandle(snapshot));
}

TEST(Processes, HandlesOfNothingAreRefused) {
    PROCESSENTRY32 entry{};
    entry.dwSize = sizeof entry;
    EXPECT_FALSE(Process32First(INVALID_HANDLE_VALUE, &entry));
    EXPECT_EQ(GetLastError(), DWORD{6});
    EXPECT_FALSE(Process32Next(INVALID_HANDLE_VALUE, &entry));
    EXPECT_EQ(GetLastError(), DWORD{6});
    // What follows when a process could not be opened.
    EXPECT_EQ(OpenProcess(PROCESS_ALL_ACCESS, FALSE, 0), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{87});
    EXPECT_EQ(OpenProcess(PROCESS_ALL_ACCESS, FALSE, 0x7FFFFFFC), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{87});
    EXPECT_FALSE(TerminateProcess(nullptr, 0));
    EXPECT_EQ(GetLastError(), DWORD{6});
    EXPECT_FALSE(CloseHandle(nullptr));
    EXPECT_EQ(GetLastError(), DWORD{6});
}

BOOL launch(LPCWSTR path) {
    return CreateProcessW(path, nullptr, nullptr, nullptr, FALSE, 0, nullptr, nullptr, nullptr,
                          nullptr);
}

TEST(Processes, WhatCannotBeStartedIsRefused) {
    const DeviceFolder device;
    device.write("T/KSTRL.exe", "not a program");
    std::filesystem::permissions(device.root() / "T/KSTRL.exe", std::filesystem::perms::all);
    device.makeFolder("T/folder");
    struct Case {
        LPCWSTR path;
        DWORD error;
        bool differsOnWine = false;
    };
    const Case cases[] = {
        {TEXT("\\T\\gone.exe"), 2},
        {TEXT("\\T\\gone\\KSTRL.exe"), 3},
        // Wine says 6.
        {TEXT("\\T\\folder"), 5, true},
        {TEXT("\\T\\KSTRL.exe"), 193},
    };
    for (const Case& test : cases) {
        if (test.differsOnWine && underWine())
            continue;
        EXPECT_EQ(launch(test.path), FALSE);
        EXPECT_EQ(GetLastError(), test.error);
    }
}

}  // namespace
