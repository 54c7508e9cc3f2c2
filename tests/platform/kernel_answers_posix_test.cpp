// Whether a copy or a move loses bytes when the kernel does a part of what it is asked, or refuses,
// and whether the right folders are flushed. The system calls are replaced by scripted ones.

#undef _FORTIFY_SOURCE  // which makes read() an inline function
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <map>

#include "platform/posix/processes/device_processes.h"
#include "platform/win32.h"
#include "support/text.h"
#include "tests/helpers/device_folder.h"

namespace {

// The answers to the next calls by name: at most so many bytes, or a negative error number. A call
// without one is made as it is.
std::map<std::string, std::vector<long>> answers;
std::vector<std::string> flushed;

long answerTo(const std::string& call) {
    std::vector<long>& next = answers[call];
    if (next.empty())
        return LONG_MAX;
    const long answer = next.front();
    next.erase(next.begin());
    errno = static_cast<int>(std::min(0L, answer) * -1);
    return answer;
}

template <class... Arguments>
ssize_t transfer(const char* call, long number, std::size_t size, Arguments... arguments) {
    const long most = answerTo(call);
    const std::size_t part = std::min(size, static_cast<std::size_t>(std::max(0L, most)));
    return most < 0 ? -1 : ::syscall(number, arguments..., part);
}

template <class... Arguments>
int make(const char* call, long number, Arguments... arguments) {
    return answerTo(call) < 0 ? -1 : static_cast<int>(::syscall(number, arguments...));
}

int flush(const char* call, long number, int folder) {
    const std::string path = host::readLink("/proc/self/fd/" + std::to_string(folder));
    flushed.push_back(call + (" " + path.substr(path.rfind('/') + 1)));
    return make(call, number, folder);
}

}  // namespace

ssize_t read(int file, void* bytes, std::size_t size) {
    return transfer("read", SYS_read, size, file, bytes);
}
ssize_t write(int file, const void* bytes, std::size_t size) {
    return transfer("write", SYS_write, size, file, bytes);
}
int fsync(int file) {
    return flush("fsync", SYS_fsync, file);
}
int syncfs(int file) noexcept {
    return flush("syncfs", SYS_syncfs, file);
}
int fdatasync(int file) {
    return make("fdatasync", SYS_fdatasync, file);
}
int renameat2(int from, const char* name, int to, const char* newName,
              unsigned int flags) noexcept {
    return make("renameat2", SYS_renameat2, from, name, to, newName, flags);
}

namespace {

enum class Call { Copy, Move };

struct Case {
    Call call;
    std::string from;
    std::string to;
    std::map<std::string, std::vector<long>> answers;
    DWORD error = 0;
    std::vector<std::string> flushed = {};
};

const std::vector<std::string> FLUSHED = {"syncfs T", "syncfs T", "fsync U", "fsync T"};

const Case CASES[] = {
    {Call::Copy, "T/f", "U/f", {{"read", {1, 65535, 2}}, {"write", {1, 65535, 1, 1}}}},
    {Call::Copy, "T/f", "U/f", {{"read", {1, -EIO}}}, 1117},
    {Call::Copy, "T/f", "U/f", {{"write", {1, -ENOSPC}}}, 112},
    // The file becomes shorter while it is copied.
    {Call::Copy, "T/f", "U/f", {{"read", {65536, 0}}}, 38},
    {Call::Copy, "T/d/g", "U/f", {{"fdatasync", {-EIO}}}, 1117},
    {Call::Move, "T/f", "U/f", {}, 0, FLUSHED},
    {Call::Move, "T/f", "U/f", {{"renameat2", {-EINVAL}}}, 0, FLUSHED},
    {Call::Move, "T/f", "U/f", {{"renameat2", {-EXDEV}}}, 17, {"syncfs T"}},
    {Call::Move, "T/d", "T/e", {{"renameat2", {-EXDEV}}}, 17, {"syncfs T"}},
    {Call::Move, "T/f", "U/f", {{"syncfs", {-EIO}}}, 1117, {"syncfs T"}},
    {Call::Move, "T/f", "U/f", {{"fsync", {-EINVAL}}}, 0, FLUSHED},
    // The disk does not confirm a move, which is not undone.
    {Call::Move, "T/f", "U/f", {{"syncfs", {1, -EIO}}}, 1117, {"syncfs T", "syncfs T"}},
    {Call::Move, "T/f", "U/f", {{"fsync", {1, -EIO}}}, 1117, FLUSHED},
};

TEST(KernelAnswers, ACopyOrAMoveIsCompleteOrNotThere) {
    std::string content(200'000, ' ');
    for (std::size_t i = 0; i < content.size(); ++i)
        content[i] = static_cast<char>('a' + i % 26 + i / 65536);
    for (const Case& test : CASES) {
        SCOPED_TRACE(&test - CASES);
        const DeviceFolder device;
        device.write("T/f", content);
        device.write("T/d/g", "g");
        device.setReadOnly("T/d/g");
        device.makeFolder("U");
        Tree expected = device.tree();
        if (test.error == 0 || test.flushed.size() > 1)
            for (const auto& [path, bytes] : Tree(expected))
                if (path.rfind(test.from, 0) == 0) {
                    expected[test.to + path.substr(test.from.size())] = bytes;
                    if (test.call == Call::Move)
                        expected.erase(path);
                }

        answers = test.answers;
        flushed.clear();
        const WideString from = widen("/" + test.from);
        const WideString to = widen("/" + test.to);
        const BOOL done = test.call == Call::Move ? MoveFileW(from.c_str(), to.c_str())
                                                  : CopyFileW(from.c_str(), to.c_str(), FALSE);
        answers.clear();
        EXPECT_EQ(done != 0 ? 0 : GetLastError(), test.error);
        EXPECT_TRUE(device.tree() == expected);
        EXPECT_EQ(flushed, test.flushed);
    }
}

TEST(KernelAnswers, NamesOfLogsAndSettingsAreFlushed) {
    const DeviceFolder device;
    device.makeFolder("T");
    flushed.clear();
    FILE* const log = _wfopen(TEXT("/T/log"), TEXT("w"));
    ASSERT_NE(log, nullptr);
    // A line is on the disk at once, behind what other programs have written.
    EXPECT_EQ(::fcntl(::fileno(log), F_GETFL) & (O_DSYNC | O_APPEND), O_DSYNC | O_APPEND);
    std::fclose(log);
    device.setLanguage(1);
    const TIME_ZONE_INFORMATION zone{};
    EXPECT_TRUE(SetTimeZoneInformation(&zone));
    EXPECT_EQ(flushed,
              (std::vector<std::string>{"fsync T", "fsync registry.reg.new", "fsync registry.reg",
                                        "fsync " + device.root().filename().string()}));
    answers = {{"write", {-ENOSPC}}};
    EXPECT_FALSE(SetTimeZoneInformation(&zone));
    EXPECT_EQ(GetLastError(), DWORD{112});
    EXPECT_NE(device.read("registry.reg").find("\"TimeZoneInformation\"=hex:"), std::string::npos);
}

}  // namespace
