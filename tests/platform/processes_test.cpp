// Tests that the process calls fail with the error numbers of Windows, and that the kernel is
// listed as the first process, which the updater skips.

#include <gtest/gtest.h>

#include "platform/win32.h"
#include "tests/helpers/device_folder.h"

namespace {

TEST(Processes, ListsTheKernelFirstAndRefusesInvalidHandles) {
    const DeviceFolder device;
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    ASSERT_NE(snapshot, INVALID_HANDLE_VALUE);
    PROCESSENTRY32 entry{};
    entry.dwSize = sizeof entry;
    EXPECT_EQ(Process32First(snapshot, &entry), TRUE);
    // Wine does not list the kernel.
    if (!underWine()) {
        EXPECT_EQ(entry.th32ProcessID, DWORD{0});
    }
    while (Process32Next(snapshot, &entry))
        EXPECT_NE(entry.th32ProcessID, DWORD{0});
    EXPECT_EQ(GetLastError(), DWORD{18});
    EXPECT_TRUE(CloseHandle(snapshot));

    const auto refuses = [](BOOL result, DWORD error) {
        EXPECT_FALSE(result);
        EXPECT_EQ(GetLastError(), error);
    };
    refuses(Process32First(INVALID_HANDLE_VALUE, &entry), 6);
    refuses(Process32Next(INVALID_HANDLE_VALUE, &entry), 6);
    // What the program does after a failed OpenProcess.
    refuses(OpenProcess(PROCESS_ALL_ACCESS, FALSE, 0) != nullptr, 87);
    refuses(OpenProcess(PROCESS_ALL_ACCESS, FALSE, 0x7FFFFFFC) != nullptr, 87);
    refuses(TerminateProcess(nullptr, 0), 6);
    refuses(CloseHandle(nullptr), 6);
}

TEST(Processes, StartingAnInvalidProgramFails) {
    const DeviceFolder device;
    device.makeFolder("T/folder");
    const std::pair<LPCWSTR, DWORD> cases[] = {
        {TEXT("\\T\\gone.exe"), 2},
        {TEXT("\\T\\gone\\KSTRL.exe"), 3},
        // Wine returns 6.
        {TEXT("\\T\\folder"), underWine() ? DWORD{6} : DWORD{5}},
    };
    for (const auto& [path, error] : cases) {
        EXPECT_FALSE(CreateProcessW(path, nullptr, nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                                    nullptr, nullptr));
        EXPECT_EQ(GetLastError(), error);
    }
}

TEST(Processes, StartingWhatIsNoProgramFails) {
    const DeviceFolder device;
    device.write("T/KSTRL.exe", "not a program");
    std::filesystem::permissions(device.root() / "T/KSTRL.exe", std::filesystem::perms::all);
    EXPECT_FALSE(CreateProcessW(TEXT("\\T\\KSTRL.exe"), nullptr, nullptr, nullptr, FALSE, 0,
                                nullptr, nullptr, nullptr, nullptr));
    EXPECT_EQ(GetLastError(), DWORD{193});
}

}  // namespace
