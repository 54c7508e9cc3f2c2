// File calls on what only this kind of system has: links, pipes, names that are not UTF-8, file
// systems that fill up.

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <functional>

#include "platform/posix/utf.h"
#include "platform/win32.h"
#include "tests/helpers/device_folder.h"

namespace {

namespace fs = std::filesystem;

class FilesPosix : public ::testing::Test {
  protected:
    void SetUp() override {
        device.write("T/s", "1");
        device.write("outside/victim", "precious");
    }

    void link(const std::string& target, const std::string& at) const {
        fs::create_symlink(target, device.root() / at);
    }

    static std::vector<std::string> list(LPCWSTR pattern) {
        std::vector<std::string> names;
        WIN32_FIND_DATAW found{};
        const HANDLE search = FindFirstFileW(pattern, &found);
        if (search == INVALID_HANDLE_VALUE)
            return names;
        do
            names.push_back(host::toUtf8(found.cFileName));
        while (FindNextFileW(search, &found));
        FindClose(search);
        return names;
    }

    DeviceFolder device;
};

TEST_F(FilesPosix, LinksAreDeletedNotFollowed) {
    link("../outside", "T/folder-link");
    link("../outside/victim", "T/file-link");
    link("nowhere", "T/dangling");
    EXPECT_EQ(list(TEXT("/T/*")),
              (std::vector<std::string>{".", "..", "dangling", "file-link", "folder-link", "s"}));
    EXPECT_TRUE(list(TEXT("/T/folder-link/*")).empty());
    EXPECT_EQ(GetLastError(), DWORD{5});

    for (LPCWSTR path : {TEXT("/T/folder-link"), TEXT("/T/file-link"), TEXT("/T/dangling")}) {
        WIN32_FIND_DATAW found{};
        FindClose(FindFirstFileW(path, &found));
        EXPECT_EQ(found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY, DWORD{0});
        EXPECT_FALSE(RemoveDirectoryW(path));
        EXPECT_EQ(GetLastError(), DWORD{267});
        EXPECT_FALSE(CopyFileW(TEXT("/T/s"), path, FALSE));
        EXPECT_EQ(GetLastError(), DWORD{5});
        EXPECT_FALSE(CopyFileW(path, TEXT("/T/copy"), FALSE));
        EXPECT_EQ(GetLastError(), DWORD{5});
        EXPECT_EQ(_wfopen(path, TEXT("w")), nullptr);
        EXPECT_EQ(GetLastError(), DWORD{5});
        EXPECT_FALSE(SetFileAttributesW(path, FILE_ATTRIBUTE_READONLY));
        EXPECT_FALSE(MoveFileW(TEXT("/T/s"), path));
        EXPECT_EQ(GetLastError(), DWORD{183});
        EXPECT_TRUE(DeleteFileW(path));
    }
    EXPECT_EQ(device.tree(),
              (Tree{{"T/", ""}, {"T/s", "1"}, {"outside/", ""}, {"outside/victim", "precious"}}));
}

TEST_F(FilesPosix, NoPathLeadsThroughALink) {
    link("../outside", "T/in");
    const std::function<bool()> calls[] = {
        [] { return DeleteFileW(TEXT("/T/in/victim")) != 0; },
        [] { return CopyFileW(TEXT("/T/s"), TEXT("/T/in/victim"), FALSE) != 0; },
        [] { return CreateDirectoryW(TEXT("/T/in/d"), nullptr) != 0; },
        [] { return RemoveDirectoryW(TEXT("/T/in/d")) != 0; },
        [] { return MoveFileW(TEXT("/T/in/victim"), TEXT("/T/v")) != 0; },
        [] { return _wfopen(TEXT("/T/in/victim"), TEXT("rb")) != nullptr; },
        [] { return GetFileAttributesW(TEXT("/T/in/victim")) != INVALID_FILE_ATTRIBUTES; },
    };
    for (const auto& call : calls) {
        EXPECT_FALSE(call());
        EXPECT_EQ(GetLastError(), DWORD{5});
    }
    EXPECT_EQ(device.read("outside/victim"), "precious");
}

TEST_F(FilesPosix, ADriveMayBeALink) {
    link("outside", "USB HD");
    EXPECT_EQ(list(TEXT("/USB HD/*")), (std::vector<std::string>{".", "..", "victim"}));
    EXPECT_TRUE(CopyFileW(TEXT("/USB HD/victim"), TEXT("/T/v"), FALSE));
}

TEST_F(FilesPosix, PipesAreNotWaitedFor) {
    ASSERT_EQ(::mkfifo((device.root() / "T/pipe").c_str(), 0666), 0);
    EXPECT_EQ(_wfopen(TEXT("/T/pipe"), TEXT("w")), nullptr);
    EXPECT_FALSE(CopyFileW(TEXT("/T/pipe"), TEXT("/T/d"), FALSE));
    EXPECT_FALSE(CopyFileW(TEXT("/T/s"), TEXT("/T/pipe"), FALSE));
}

TEST_F(FilesPosix, NamesThatAreNoPathOfTheDeviceAreNotListed) {
    device.makeFolder("T/key");
    const fs::path key = device.root() / "T/key";
    std::FILE* file = std::fopen((key / "..\\..\\outside\\victim").c_str(), "w");
    ASSERT_NE(file, nullptr);
    std::fclose(file);
    EXPECT_EQ(list(TEXT("/T/key/*")), (std::vector<std::string>{".", ".."}));
}

TEST_F(FilesPosix, ACopyOntoAFullDiskLeavesNothingBehind) {
    device.write("T/large", std::string(300000, 'x'));
    device.write("T/present", "old");
    // The limit stands in for the disk's end: the kernel refuses to write beyond it.
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    ::getrlimit(RLIMIT_FSIZE, &before);
    const rlimit small{100000, before.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &small);
    const BOOL fresh = CopyFileW(TEXT("/T/large"), TEXT("/T/fresh"), FALSE);
    const DWORD error = GetLastError();
    const BOOL onto = CopyFileW(TEXT("/T/large"), TEXT("/T/present"), FALSE);
    ::setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_FALSE(fresh);
    EXPECT_EQ(error, DWORD{112});
    EXPECT_FALSE(onto);
    EXPECT_FALSE(device.exists("T/fresh"));
    EXPECT_FALSE(device.exists("T/present"));
}

TEST_F(FilesPosix, ACopyCarriesModeAndTime) {
    const fs::path source = device.root() / "T/s";
    const fs::path copy = device.root() / "T/d";
    fs::permissions(source, static_cast<fs::perms>(0755));
    const fs::file_time_type changed = fs::last_write_time(source) - std::chrono::hours(1000);
    fs::last_write_time(source, changed);
    ASSERT_TRUE(CopyFileW(TEXT("/T/s"), TEXT("/T/d"), FALSE));
    EXPECT_EQ(fs::last_write_time(copy), changed);
    EXPECT_EQ(fs::status(copy).permissions(), static_cast<fs::perms>(0755));
}

TEST_F(FilesPosix, TheDeviceItselfStays) {
    fs::remove_all(device.root() / "T");
    fs::remove_all(device.root() / "outside");
    for (LPCWSTR path : {TEXT("/"), TEXT("\\.."), TEXT("/a/../../..")}) {
        EXPECT_FALSE(RemoveDirectoryW(path));
        EXPECT_FALSE(MoveFileW(path, TEXT("/x")));
        EXPECT_FALSE(DeleteFileW(path));
    }
    EXPECT_TRUE(fs::exists(device.root()));
}

}  // namespace
