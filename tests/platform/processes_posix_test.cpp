// Tests that the simulator cannot end a process outside the device, and finds every program in
// it: deleted ones, those of the same name, those whose main thread has ended.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <functional>
#include <thread>

#include "platform/posix/files/device.h"
#include "platform/posix/processes/device_processes.h"
#include "platform/posix/signals.h"
#include "platform/utf.h"
#include "platform/win32.h"
#include "tests/helpers/device_folder.h"
#include "tools/host/host_file.h"
#include "tools/host/process.h"
#include "tools/host/temporary_folder.h"

namespace {

namespace fs = std::filesystem;

const std::string PROGRAM = "FlashDisk/VELD/KSTRL/KSTRL.exe";

std::vector<DWORD> processesNamed(const std::string& name) {
    std::vector<DWORD> ids;
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    PROCESSENTRY32 entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = Process32First(snapshot, &entry); more;
         more = Process32Next(snapshot, &entry)) {
        if (host::toUtf8(entry.szExeFile) == name)
            ids.push_back(entry.th32ProcessID);
    }
    CloseHandle(snapshot);
    std::sort(ids.begin(), ids.end());
    return ids;
}

// Polls until the condition holds; false when it does not for a long time.
bool waitUntil(const std::function<bool()>& condition) {
    for (int tries = 0; tries < 24'000; ++tries) {
        if (condition())
            return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return false;
}

DWORD idOf(const Process& process) {
    return static_cast<DWORD>(process.id());
}

// When OpenProcess fails, the other two calls reject the null handle.
BOOL end(DWORD id) {
    const HANDLE process = OpenProcess(PROCESS_ALL_ACCESS, FALSE, id);
    const BOOL ended = TerminateProcess(process, 0);
    CloseHandle(process);
    return ended;
}

BOOL launch() {
    return CreateProcessW(u"\\FlashDisk\\VELD\\KSTRL\\KSTRL.exe", nullptr, nullptr, nullptr, FALSE,
                          0, nullptr, nullptr, nullptr, nullptr);
}

class ProcessesPosix : public ::testing::Test {
  protected:
    // The flash disk is elsewhere, and still of the device.
    void SetUp() override {
        fs::create_directories(flashDisk.path() / "VELD/KSTRL");
        fs::create_directory_symlink(flashDisk.path(), device.root() / "FlashDisk");
    }

    std::string host(const std::string& path = PROGRAM) const {
        return (device.root() / path).string();
    }
    void installSleep() const { fs::copy_file("/bin/sleep", host()); }
    const TemporaryFolder flashDisk{fs::temp_directory_path() / "flash"};
    DeviceFolder device;
};

TEST_F(ProcessesPosix, ProgramsAreSeenAndEndedOnce) {
    installSleep();
    fs::copy_file(PROGRAM_WITHOUT_MAIN_THREAD, host("KSTRL.exe"));
    Process first({{host(), "300"}});
    Process second({{host(), "300"}});
    Process withoutMain({{host("KSTRL.exe")}});
    Process* const all[] = {&first, &second, &withoutMain};
    EXPECT_TRUE(waitUntil([] { return processesNamed("KSTRL.exe").size() == 3; }));
    fs::remove(host());  // deleted, but still programs of the device
    EXPECT_TRUE(waitUntil([&] {
        return host::readLink("/proc/" + std::to_string(withoutMain.id()) + "/exe").empty();
    }));

    std::vector<DWORD> ids;
    for (const Process* const process : all)
        ids.push_back(idOf(*process));
    std::sort(ids.begin(), ids.end());
    EXPECT_EQ(processesNamed("KSTRL.exe"), ids);
    for (const DWORD id : ids)
        EXPECT_EQ(end(id), TRUE);
    // The ended processes are zombies until the test waits for them.
    EXPECT_TRUE(waitUntil([] { return processesNamed("KSTRL.exe").empty(); }));
    EXPECT_FALSE(end(ids[0]));
    for (Process* const ended : all)
        EXPECT_EQ(ended->wait(), -1) << "it was not killed";
}

TEST_F(ProcessesPosix, ProcessesOutsideTheDeviceCannotBeOpened) {
    const std::string folder = host("FlashDisk/VELD/KSTRL");
    device.write(PROGRAM, "#!/bin/sh\nkill -STOP $$\n");
    fs::permissions(host(), fs::perms::owner_all);
    fs::copy_file("/bin/sleep", host("apart"));
    const TemporaryFolder elsewhere(fs::temp_directory_path() / "elsewhere");
    fs::copy_file("/bin/sleep", elsewhere.path() / "KSTRL.exe");
    const Process sameName({{elsewhere.path() / "KSTRL.exe", "300"}});
    const Process script({{host()}});
    const Process reader({{"env", "-C", folder, "tail", "-f", "KSTRL.exe"}});
    // A process in a separate mount namespace. It exits at once where that is not permitted.
    Process apart({{"unshare", "-rm", host("apart"), "300"}});
    EXPECT_TRUE(waitUntil([&] {
        return apart.hasEnded() ||
               readHostFileIfThere("/proc/" + std::to_string(apart.id()) + "/comm") == "apart\n";
    }));
    for (const DWORD id :
         {idOf(sameName), idOf(script), idOf(reader), static_cast<DWORD>(::getpid()), DWORD{1}}) {
        EXPECT_EQ(OpenProcess(PROCESS_ALL_ACCESS, FALSE, id), nullptr);
        EXPECT_EQ(GetLastError(), DWORD{5});
    }
    for (const char* const name : {"KSTRL.exe", "tail", "apart"})
        EXPECT_TRUE(processesNamed(name).empty()) << name;
}

TEST_F(ProcessesPosix, AStartedProgramIsDetachedAndInheritsNoFiles) {
    fs::copy_file("/usr/bin/yes", host());
    setDeviceRoot(fs::relative(device.root()));
    host::ignoreSignalsOfWrites();
    sigset_t all;
    sigset_t before;
    ::sigfillset(&all);
    ::sigprocmask(SIG_SETMASK, &all, &before);
    ASSERT_EQ(launch(), TRUE);
    ::sigprocmask(SIG_SETMASK, &before, nullptr);
    std::vector<DWORD> ids;
    // In an emulator of a processor the program may begin only after the call.
    ASSERT_TRUE(waitUntil([&] { return (ids = processesNamed("KSTRL.exe")).size() == 1; }));
    const std::string process = "/proc/" + std::to_string(ids[0]);
    const std::map<std::string, std::string> streams = {
        {"0", "/dev/null"}, {"1", "/dev/null"}, {"2", "/dev/null"}};
    // While the program is loading, its libraries are open too.
    EXPECT_TRUE(waitUntil([&] {
        std::map<std::string, std::string> open;
        std::error_code gone;
        for (const auto& entry : fs::directory_iterator(process + "/fd"))
            open[entry.path().filename()] = fs::read_symlink(entry.path(), gone);
        return open == streams;
    }));
    // Started by its absolute path, with no signal ignored or blocked, except those that the C
    // library keeps for itself.
    EXPECT_EQ(readHostFile(process + "/cmdline").c_str(), fs::canonical(host()));
    const std::string status = readHostFile(process + "/status");
    for (const std::string signals : {"SigIgn:", "SigBlk:"})
        EXPECT_EQ(std::stoull(status.substr(status.find(signals) + signals.size()), nullptr, 16) &
                      0x7FFFFFFF,
                  0U);
    const auto id = static_cast<pid_t>(ids[0]);
    EXPECT_EQ(::getsid(id), id);
}

TEST_F(ProcessesPosix, ASecondUpdaterChangesNothing) {
    installSleep();
    Process application({{host(), "300"}});
    EXPECT_TRUE(waitUntil([] { return processesNamed("KSTRL.exe").size() == 1; }));
    const int folder = ::open(device.root().c_str(), O_RDONLY | O_CLOEXEC);
    for (const auto& [lock, code] : {std::pair{LOCK_EX, 3}, std::pair{LOCK_UN, 255}}) {
        ASSERT_EQ(::flock(folder, lock), 0);
        Process updater({{UPDATER_PROGRAM},
                         {{"DISPLAY", ""}, {"UPDATER_DEVICE", device.root() / "."}},
                         {},
                         {},
                         host("errors")});
        EXPECT_EQ(updater.wait(), code);
        const std::string message = "updater: another updater runs on the device folder \"";
        EXPECT_EQ(device.read("errors").find(message), code == 3 ? 0 : std::string::npos);
        EXPECT_TRUE(waitUntil([&, ends = code != 3] { return application.hasEnded() == ends; }));
    }
    ::close(folder);
}

TEST_F(ProcessesPosix, StartingAFileWithoutTheRightToRunFails) {
    device.write(PROGRAM, "#!/bin/sh\n");
    fs::permissions(host(), static_cast<fs::perms>(0644));
    EXPECT_EQ(launch(), FALSE);
    EXPECT_EQ(GetLastError(), DWORD{5});
}

}  // namespace
