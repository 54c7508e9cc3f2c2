// Tests that links, pipes, names that are not UTF-8 and full file systems make no call leave the
// device, hang, or leave half a file.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "platform/win32.h"
#include "support/file_util.h"
#include "tests/helpers/device_folder.h"
#include "tools/host/host_file.h"

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

    static std::vector<std::string> list(const std::string& folder) {
        std::vector<std::string> names;
        for (const FileEntry& entry : listDirectory(folder, true, true))
            names.push_back(entry.name);
        return names;
    }

    DeviceFolder device;
};

struct Call {
    bool (*succeeds)(LPCWSTR path);
    DWORD error;
};

const Call CALLS[] = {
    {[](LPCWSTR path) { return RemoveDirectoryW(path) != 0; }, 267},
    {[](LPCWSTR path) { return CopyFileW(TEXT("/T/s"), path, FALSE) != 0; }, 5},
    {[](LPCWSTR path) { return CopyFileW(path, TEXT("/T/copy"), FALSE) != 0; }, 5},
    {[](LPCWSTR path) { return _wfopen(path, TEXT("w")) != nullptr; }, 5},
    {[](LPCWSTR path) { return _wfopen(path, TEXT("rb")) != nullptr; }, 5},
    {[](LPCWSTR path) { return SetFileAttributesW(path, FILE_ATTRIBUTE_READONLY) != 0; }, 5},
    {[](LPCWSTR path) { return MoveFileW(TEXT("/T/s"), path) != 0; }, 183},
    {[](LPCWSTR path) { return CreateDirectoryW(path, nullptr) != 0; }, 183},
};

TEST_F(FilesPosix, LinksAreDeletedNotFollowed) {
    // A folder that the last call has seen is swapped for a link to it.
    fs::rename(device.root() / "outside", device.root() / "T/folder-link");
    EXPECT_EQ(GetFileAttributesW(TEXT("/T/folder-link/victim")), FILE_ATTRIBUTE_ARCHIVE);
    fs::rename(device.root() / "T/folder-link", device.root() / "outside");
    link("../outside", "T/folder-link");
    EXPECT_FALSE(DeleteFileW(TEXT("/T/folder-link/victim")));

    link("../outside/victim", "T/file-link");
    link("nowhere", "T/dangling");
    EXPECT_EQ(list("/T/"), (std::vector<std::string>{"dangling", "file-link", "folder-link", "s"}));
    EXPECT_TRUE(list("/T/folder-link/").empty());
    EXPECT_EQ(GetLastError(), DWORD{5});
    for (const Call& call : CALLS) {
        EXPECT_FALSE(call.succeeds(TEXT("/T/folder-link/victim")));
        EXPECT_EQ(GetLastError(), DWORD{5});
    }
    EXPECT_FALSE(MoveFileW(TEXT("/T/folder-link/victim"), TEXT("/T/v")));
    EXPECT_EQ(GetFileAttributesW(TEXT("/T/folder-link/victim")), INVALID_FILE_ATTRIBUTES);

    for (LPCWSTR path : {TEXT("/T/folder-link"), TEXT("/T/file-link"), TEXT("/T/dangling")}) {
        WIN32_FIND_DATAW found{};
        FindClose(FindFirstFileW(path, &found));
        EXPECT_EQ(found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY, DWORD{0});
        for (const Call& call : CALLS) {
            EXPECT_FALSE(call.succeeds(path));
            EXPECT_EQ(GetLastError(), call.error);
        }
        EXPECT_TRUE(DeleteFileW(path));
    }
    EXPECT_EQ(device.tree(),
              (Tree{{"T/", ""}, {"T/s", "1"}, {"outside/", ""}, {"outside/victim", "precious"}}));
}

TEST_F(FilesPosix, ADriveMayBeALink) {
    link("outside", "USB HD");
    EXPECT_EQ(list("/USB HD/"), (std::vector<std::string>{"victim"}));
    EXPECT_TRUE(CopyFileW(TEXT("/USB HD/victim"), TEXT("/T/v"), FALSE));
    EXPECT_EQ(device.read("T/v"), "precious");
    // A file system that reports no file sizes.
    link("/proc", "proc");
    EXPECT_TRUE(CopyFileW(TEXT("/proc/version"), TEXT("/T/version"), FALSE));
    EXPECT_EQ(device.read("T/version"), readHostFile("/proc/version"));
}

TEST_F(FilesPosix, NothingIsWrittenToAPipe) {
    ASSERT_EQ(::mkfifo((device.root() / "T/pipe").c_str(), 0666), 0);
    EXPECT_EQ(_wfopen(TEXT("/T/pipe"), TEXT("w")), nullptr);
    EXPECT_FALSE(CopyFileW(TEXT("/T/s"), TEXT("/T/pipe"), FALSE));
}

TEST_F(FilesPosix, ACopyKeepsModeAndTime) {
    const fs::path source = device.root() / "T/s";
    const fs::path copy = device.root() / "T/d";
    fs::permissions(source, static_cast<fs::perms>(0755));
    device.write("T/d", "left by an interrupted update");
    const fs::file_time_type changed = fs::last_write_time(source) - std::chrono::hours(1000);
    fs::last_write_time(source, changed);
    ASSERT_TRUE(CopyFileW(TEXT("/T/s"), TEXT("/T/d"), FALSE));
    EXPECT_EQ(fs::last_write_time(copy), changed);
    EXPECT_EQ(fs::status(copy).permissions(), static_cast<fs::perms>(0755));
}

TEST_F(FilesPosix, OtherUsersMayUseNewFoldersAndLogs) {
    const mode_t before = ::umask(0);
    EXPECT_TRUE(CreateDirectoryW(TEXT("/T/d"), nullptr));
    std::fclose(_wfopen(TEXT("/T/log"), TEXT("w")));
    ::umask(before);
    EXPECT_EQ(fs::status(device.root() / "T/d").permissions(), fs::perms::all);
    EXPECT_EQ(fs::status(device.root() / "T/log").permissions(), static_cast<fs::perms>(0666));
}

TEST_F(FilesPosix, TheDeviceRootCannotBeDeletedOrMoved) {
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
