// Real processes: the device's are seen, ended and started; the host's are out of reach.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <functional>
#include <sstream>
#include <thread>

#include "platform/posix/utf.h"
#include "platform/win32.h"
#include "tests/support/device_folder.h"

namespace {

namespace fs = std::filesystem;

const std::string PROGRAM = "FlashDisk/VELD/KSTRL/KSTRL.exe";

// A process of the test's own, ended with it.
class Child {
  public:
    Child(const std::string& program, std::vector<std::string> arguments) {
        int report[2];
        if (::pipe2(report, O_CLOEXEC) != 0)
            return;
        arguments.insert(arguments.begin(), program);
        std::vector<char*> list;
        for (std::string& argument : arguments)
            list.push_back(argument.data());
        list.push_back(nullptr);
        id_ = ::fork();
        if (id_ == 0) {
            ::execv(program.c_str(), list.data());
            ::_exit(127);
        }
        // Its end closes when the program has taken the place of the fork.
        ::close(report[1]);
        char none = 0;
        EXPECT_EQ(::read(report[0], &none, 1), 0);
        ::close(report[0]);
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    ~Child() {
        if (id_ > 0) {
            ::kill(id_, SIGKILL);
            ::waitpid(id_, nullptr, 0);
        }
    }

    DWORD id() const { return static_cast<DWORD>(id_); }
    int signalThatEndedIt() {
        int status = 0;
        ::waitpid(id_, &status, 0);
        id_ = 0;
        return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    }

  private:
    pid_t id_ = 0;
};

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

BOOL end(DWORD id) {
    const HANDLE process = OpenProcess(PROCESS_ALL_ACCESS, FALSE, id);
    if (process == nullptr)
        return FALSE;
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
    void SetUp() override { device.makeFolder("FlashDisk/VELD/KSTRL"); }
    void TearDown() override {
        for (const DWORD id : processesNamed("KSTRL.exe"))
            end(id);
    }

    std::string host(const std::string& path = PROGRAM) const {
        return (device.root() / path).string();
    }
    void installSleep() const { fs::copy_file("/bin/sleep", host()); }
    void installScript(const std::string& text, const std::string& path = PROGRAM) const {
        device.write(path, text);
        fs::permissions(host(path), static_cast<fs::perms>(0755));
    }
    // Waits for what a started program does on its own.
    static bool comesTrue(const std::function<bool()>& condition) {
        for (int i = 0; i < 2000 && !condition(); ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        return condition();
    }

    DeviceFolder device;
};

TEST_F(ProcessesPosix, ProgramsAndScriptsAreSeenAndEnded) {
    installSleep();
    installScript("#!/bin/sh -e\nread never\n", "FlashDisk/VELD/script/KSTRL.exe");
    int wait[2];
    ASSERT_EQ(::pipe(wait), 0);
    const int input = ::dup(0);
    ::dup2(wait[0], 0);
    Child first(host(), {"1000"});
    Child second(host(), {"1000"});
    Child script(host("FlashDisk/VELD/script/KSTRL.exe"), {});
    ::dup2(input, 0);
    ::close(input);

    std::vector<DWORD> ids = {first.id(), second.id(), script.id()};
    std::sort(ids.begin(), ids.end());
    EXPECT_EQ(processesNamed("KSTRL.exe"), ids);
    for (const DWORD id : ids)
        EXPECT_EQ(end(id), TRUE);
    EXPECT_EQ(first.signalThatEndedIt(), SIGKILL);
    EXPECT_EQ(second.signalThatEndedIt(), SIGKILL);
    EXPECT_EQ(script.signalThatEndedIt(), SIGKILL);
    EXPECT_TRUE(processesNamed("KSTRL.exe").empty());
    ::close(wait[0]);
    ::close(wait[1]);
}

TEST_F(ProcessesPosix, AProgramWhoseFileIsGoneIsStillTheDevices) {
    installSleep();
    const Child child(host(), {"1000"});
    fs::remove(host());
    EXPECT_EQ(processesNamed("KSTRL.exe"), (std::vector<DWORD>{child.id()}));
}

TEST_F(ProcessesPosix, AnEndedProcessIsNotSeenAndCannotBeEndedTwice) {
    installSleep();
    const Child child(host(), {"1000"});
    const HANDLE process = OpenProcess(PROCESS_ALL_ACCESS, FALSE, child.id());
    ASSERT_NE(process, nullptr);
    EXPECT_TRUE(TerminateProcess(process, 0));
    EXPECT_TRUE(comesTrue([] { return processesNamed("KSTRL.exe").empty(); }));
    EXPECT_TRUE(CloseHandle(process));
    EXPECT_FALSE(end(child.id()));
}

TEST_F(ProcessesPosix, ProcessesOfTheHostAreOutOfReach) {
    installSleep();
    const fs::path elsewhere = device.root().string() + "-elsewhere";
    fs::create_directories(elsewhere);
    fs::copy_file("/bin/sleep", elsewhere / "KSTRL.exe");
    fs::create_symlink("/bin/tail", elsewhere / "follow");
    device.write("FlashDisk/VELD/KSTRL/follow");
    {
        const Child sameName((elsewhere / "KSTRL.exe").string(), {"1000"});
        const Child givenAPath("/bin/tail", {"-c0", "-f", host()});
        // Named like the file that it was given, by the link through which it was started.
        const Child namesake((elsewhere / "follow").string(),
                             {"-f", host("FlashDisk/VELD/KSTRL/follow")});
        for (const DWORD id : {sameName.id(), givenAPath.id(), namesake.id(),
                               static_cast<DWORD>(::getpid()), DWORD{1}}) {
            EXPECT_EQ(OpenProcess(PROCESS_ALL_ACCESS, FALSE, id), nullptr);
            EXPECT_EQ(GetLastError(), DWORD{5});
        }
        EXPECT_TRUE(processesNamed("KSTRL.exe").empty());
        EXPECT_TRUE(processesNamed("follow").empty());
        EXPECT_TRUE(processesNamed("tail").empty());
    }
    fs::remove_all(elsewhere);
}

TEST_F(ProcessesPosix, AStartedScriptIsOnItsOwn) {
    // Session, parent and streams, as it sees them itself.
    installScript(
        "#!/bin/sh\n"
        "cd \"${0%/*}\"\n"
        "read -r stat < /proc/$$/stat\n"
        "(echo \"$$ $stat\"; for fd in 0 1 2; do readlink /proc/$$/fd/$fd; done) > new\n"
        "mv new report\n");
    ASSERT_EQ(launch(), TRUE);
    const std::string report = "FlashDisk/VELD/KSTRL/report";
    ASSERT_TRUE(comesTrue([&] { return device.exists(report); }));
    std::istringstream text(device.read(report));
    int id = 0, same = 0, parent = 0, group = 0, session = 0;
    std::string name, state, line;
    text >> id >> same >> name >> state >> parent >> group >> session;
    EXPECT_EQ(name, "(KSTRL.exe)");
    EXPECT_NE(parent, ::getpid());
    EXPECT_EQ(session, id);
    std::getline(text, line);
    for (int stream = 0; stream <= 2; ++stream) {
        std::getline(text, line);
        EXPECT_EQ(line, "/dev/null");
    }
    // No child of ours is left, not even a dead one.
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
}

TEST_F(ProcessesPosix, AStartedProgramRunsOnAndHoldsNothingButItsStreams) {
    fs::copy_file("/usr/bin/yes", host());
    ASSERT_EQ(launch(), TRUE);
    const std::vector<DWORD> ids = processesNamed("KSTRL.exe");
    ASSERT_EQ(ids.size(), std::size_t{1});
    const std::map<std::string, std::string> streams = {
        {"0", "/dev/null"}, {"1", "/dev/null"}, {"2", "/dev/null"}};
    // While it is being loaded, its libraries are open too.
    EXPECT_TRUE(comesTrue([&] {
        std::map<std::string, std::string> open;
        std::error_code gone;
        for (const auto& entry : fs::directory_iterator("/proc/" + std::to_string(ids[0]) + "/fd"))
            open[entry.path().filename()] = fs::read_symlink(entry.path(), gone);
        return open == streams;
    }));
    EXPECT_TRUE(end(ids[0]));
    EXPECT_TRUE(comesTrue([] { return processesNamed("KSTRL.exe").empty(); }));
}

TEST_F(ProcessesPosix, RefusalsOfTheHostKeepTheirNumbers) {
    device.write(PROGRAM, "#!/bin/sh\n");
    fs::permissions(host(), static_cast<fs::perms>(0644));
    EXPECT_EQ(launch(), FALSE);
    EXPECT_EQ(GetLastError(), DWORD{5});

    fs::remove(host());
    installSleep();
    const Child running(host(), {"1000"});
    device.write("T/s", "1");
    EXPECT_FALSE(CopyFileW(u"/T/s", u"/FlashDisk/VELD/KSTRL/KSTRL.exe", FALSE));
    EXPECT_EQ(GetLastError(), DWORD{32});
}

TEST(Processes, ATooSmallRecordIsRefused) {
    const DeviceFolder device;
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    PROCESSENTRY32 entry{};
    entry.dwSize = sizeof entry - 1;
    EXPECT_FALSE(Process32First(snapshot, &entry));
    EXPECT_EQ(GetLastError(), DWORD{122});
    entry.dwSize = 0;
    EXPECT_FALSE(Process32Next(snapshot, &entry));
    EXPECT_EQ(GetLastError(), DWORD{122});
    EXPECT_TRUE(CloseHandle(snapshot));
}

}  // namespace
