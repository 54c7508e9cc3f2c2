// Tests that each file call changes what it changes on Windows, and fails with the same error
// number. Each row: the content of a folder before, the call, the error (0 for success), the
// content after.

#include <gtest/gtest.h>

#include <sstream>

#include "platform/win32.h"
#include "support/text.h"
#include "tests/helpers/device_folder.h"

namespace {

// Fills the folder "T": "d/" is a folder, "f=bytes" a file, "!f=bytes" a read-only file.
void make(const DeviceFolder& device, const std::string& state) {
    device.makeFolder("T");
    std::istringstream entries(state);
    for (std::string entry; entries >> entry;) {
        const bool readOnly = entry[0] == '!';
        const std::size_t equals = entry.find('=');
        const std::string path = "T/" + entry.substr(readOnly ? 1 : 0, equals - (readOnly ? 1 : 0));
        if (equals == std::string::npos)
            device.makeFolder(path);
        else
            device.write(path, entry.substr(equals + 1));
        if (readOnly)
            device.setReadOnly(path);
    }
}

std::string stateOf(const DeviceFolder& device) {
    namespace fs = std::filesystem;
    std::string state;
    for (const auto& [name, bytes] : device.tree("T")) {
        const fs::perms mode = fs::status(device.root() / "T" / name).permissions();
        const bool isFolder = name.back() == '/';
        if (!isFolder && (mode & fs::perms::owner_write) == fs::perms::none)
            state += '!';
        state += name + (isFolder ? "" : "=" + bytes) + " ";
    }
    return state.substr(0, state.size() - (state.empty() ? 0 : 1));
}

struct Case {
    const char* before;
    BOOL (*call)();
    DWORD error;
    const char* after;  // null: unchanged
    bool differsOnWine = false;
};

void run(const std::vector<Case>& cases) {
    for (std::size_t i = 0; i < cases.size(); ++i) {
        const Case& test = cases[i];
        if (test.differsOnWine && underWine())
            continue;
        SCOPED_TRACE("case " + std::to_string(i) + ": " + test.before);
        const DeviceFolder device;
        make(device, test.before);
        SetLastError(0);
        const BOOL done = test.call();
        const DWORD error = done != 0 ? 0 : GetLastError();
        EXPECT_EQ(error, test.error);
        EXPECT_EQ(done != 0, test.error == 0);
        EXPECT_EQ(stateOf(device), test.after != nullptr ? test.after : test.before);
    }
}

TEST(Files, CreateFolder) {
    run({
        {"", [] { return CreateDirectoryW(TEXT("/T/d"), nullptr); }, 0, "d/"},
        {"", [] { return CreateDirectoryW(TEXT("\\T\\\\d/"), nullptr); }, 0, "d/"},
        {"d/", [] { return CreateDirectoryW(TEXT("/T/d"), nullptr); }, 183, nullptr},
        {"f=1", [] { return CreateDirectoryW(TEXT("/T/f"), nullptr); }, 183, nullptr},
        {"", [] { return CreateDirectoryW(TEXT("/T/a/d"), nullptr); }, 3, nullptr},
        {"f=1", [] { return CreateDirectoryW(TEXT("/T/f/d"), nullptr); }, 3, nullptr},
        {"", [] { return CreateDirectoryW(TEXT(""), nullptr); }, 3, nullptr},
        {"", [] { return CreateDirectoryW(TEXT("/T/a?b"), nullptr); }, 123, nullptr},
        {"", [] { return CreateDirectoryW(TEXT("/T/d. ."), nullptr); }, 0, "d/"},
        {"dot/", [] { return CreateDirectoryW(TEXT("/T/dot."), nullptr); }, 183, nullptr},
        {"D/", [] { return CreateDirectoryW(TEXT("/T/d./e"), nullptr); }, 0, "D/ D/e/"},
    });
}

TEST(Files, Copy) {
    static constexpr LPCWSTR S = TEXT("/T/s");
    static constexpr LPCWSTR D = TEXT("/T/d");
    run({
        {"s=1", [] { return CopyFileW(S, D, FALSE); }, 0, "d=1 s=1"},
        {"s=1", [] { return CopyFileW(TEXT("\\T//s"), TEXT("/T/gone/..\\d"), FALSE); }, 0,
         "d=1 s=1"},
        {"s=", [] { return CopyFileW(S, D, TRUE); }, 0, "d= s="},
        {"d=longer s=1", [] { return CopyFileW(S, D, FALSE); }, 0, "d=1 s=1"},
        {"!s=1", [] { return CopyFileW(S, D, FALSE); }, 0, "!d=1 !s=1"},
        // Wine keeps the flags of the overwritten file.
        {"d=2 !s=1", [] { return CopyFileW(S, D, FALSE); }, 0, "!d=1 !s=1", true},
        {"d=2 s=1", [] { return CopyFileW(S, D, TRUE); }, 80, nullptr},
        {"!d=2 s=1", [] { return CopyFileW(S, D, TRUE); }, 80, nullptr},
        // As root, Wine overwrites a read-only file.
        {"!d=2 s=1", [] { return CopyFileW(S, D, FALSE); }, 5, nullptr, true},
        {"d/ s=1", [] { return CopyFileW(S, D, FALSE); }, 5, nullptr},
        {"s/", [] { return CopyFileW(S, D, FALSE); }, 5, nullptr},
        {"s=1", [] { return CopyFileW(S, S, FALSE); }, 32, nullptr},
        {"", [] { return CopyFileW(S, D, FALSE); }, 2, nullptr},
        {"d=2", [] { return CopyFileW(TEXT("/T/a/s"), D, FALSE); }, 3, nullptr},
        {"s=1", [] { return CopyFileW(S, TEXT("/T/a/d"), FALSE); }, 3, nullptr},
        {"f=2 s=1", [] { return CopyFileW(S, TEXT("/T/f/d"), FALSE); }, 3, nullptr},
        {"s=1", [] { return CopyFileW(TEXT("/T/a?b"), D, FALSE); }, 123, nullptr},
        {"s=1", [] { return CopyFileW(S, TEXT("/T/a*b"), FALSE); }, 123, nullptr},
        {"s=1", [] { return CopyFileW(TEXT("/T/s/"), D, FALSE); }, 123, nullptr},
        {"s=1", [] { return CopyFileW(S, TEXT("/T/d\\"), FALSE); }, 123, nullptr},
        {"F/ S=1", [] { return CopyFileW(TEXT("/t/s"), TEXT("/T/f/d"), FALSE); }, 0,
         "F/ F/d=1 S=1"},
    });
}

TEST(Files, Move) {
    static constexpr LPCWSTR S = TEXT("/T/s");
    static constexpr LPCWSTR D = TEXT("/T/d");
    run({
        {"s=1", [] { return MoveFileW(S, D); }, 0, "d=1"},
        {"!s=1", [] { return MoveFileW(S, D); }, 0, "!d=1"},
        {"s/ s/a=1 s/b/", [] { return MoveFileW(S, D); }, 0, "d/ d/a=1 d/b/"},
        {"a/ s/ s/x=1", [] { return MoveFileW(S, TEXT("/T/a/s")); }, 0, "a/ a/s/ a/s/x=1"},
        {"d=2 s=1", [] { return MoveFileW(S, D); }, 183, nullptr},
        {"d/ s=1", [] { return MoveFileW(S, D); }, 183, nullptr},
        {"d/ s/ s/a=1", [] { return MoveFileW(S, D); }, 183, nullptr},
        {"d=2 s/", [] { return MoveFileW(S, D); }, 183, nullptr},
        {"d=2", [] { return MoveFileW(S, D); }, 2, nullptr},
        {"", [] { return MoveFileW(TEXT("/T/a/s"), D); }, 3, nullptr},
        {"s=1", [] { return MoveFileW(S, TEXT("/T/a/d")); }, 3, nullptr},
        {"s=1", [] { return MoveFileW(TEXT("/T/a?b"), D); }, 123, nullptr},
        {"s=1", [] { return MoveFileW(S, TEXT("/T/a|b")); }, 123, nullptr},
        {"s=1", [] { return MoveFileW(TEXT("/T/s/"), D); }, 123, nullptr},
        {"S/", [] { return MoveFileW(S, D); }, 0, "d/"},
        // Wine keeps the old case of a folder's name, and gives 87 for a move into itself.
        {"s/ s/a=1", [] { return MoveFileW(S, TEXT("/T/S")); }, 0, "S/ S/a=1", true},
        {"s=1", [] { return MoveFileW(S, S); }, 0, nullptr},
        {"s/", [] { return MoveFileW(S, TEXT("/T/s/d")); }, 32, nullptr, true},
        {"D/ s/", [] { return MoveFileW(S, D); }, 183, nullptr},
    });
}

TEST(Files, Delete) {
    static constexpr LPCWSTR F = TEXT("/T/f");
    run({
        {"f=1 g=2", [] { return DeleteFileW(F); }, 0, "g=2"},
        {"!f=1", [] { return DeleteFileW(F); }, 5, nullptr},
        {"f/", [] { return DeleteFileW(F); }, 5, nullptr},
        {"", [] { return DeleteFileW(F); }, 2, nullptr},
        {"", [] { return DeleteFileW(TEXT("/T/a/f")); }, 3, nullptr},
        {"f=1", [] { return DeleteFileW(TEXT("/T/f/x")); }, 3, nullptr},
        {"", [] { return DeleteFileW(TEXT("/T/a?b")); }, 123, nullptr},
        {"f=1", [] { return DeleteFileW(TEXT("/T/f/")); }, 123, nullptr},
        {"F=1", [] { return DeleteFileW(F); }, 0, ""},
        {"", [] { return DeleteFileW(TEXT("/T/gone/a\nb")); }, 123, nullptr},
    });
}

TEST(Files, RemoveFolder) {
    static constexpr LPCWSTR D = TEXT("/T/d");
    run({
        {"d/", [] { return RemoveDirectoryW(D); }, 0, ""},
        {"d/", [] { return RemoveDirectoryW(TEXT("/T/d\\")); }, 0, ""},
        {"d/ d/f=1", [] { return RemoveDirectoryW(D); }, 145, nullptr},
        {"d/ d/e/", [] { return RemoveDirectoryW(D); }, 145, nullptr},
        {"d=1", [] { return RemoveDirectoryW(D); }, 267, nullptr},
        {"", [] { return RemoveDirectoryW(D); }, 2, nullptr},
        {"", [] { return RemoveDirectoryW(TEXT("/T/a/d")); }, 3, nullptr},
        {"", [] { return RemoveDirectoryW(TEXT("/T/a?b\\")); }, 123, nullptr},
        {"A/ A/D/", [] { return RemoveDirectoryW(TEXT("/T/a/d\\")); }, 0, "A/"},
    });
}

TEST(Files, SetAttributes) {
    static constexpr LPCWSTR F = TEXT("/T/f");
    run({
        {"!f=1", [] { return SetFileAttributesW(F, 0x20); }, 0, "f=1"},
        {"f=1", [] { return SetFileAttributesW(F, 0x21); }, 0, "!f=1"},
        {"", [] { return SetFileAttributesW(F, 0xFFFFFFFE); }, 2, nullptr},
        {"", [] { return SetFileAttributesW(TEXT("/T/a/f"), 0x20); }, 3, nullptr},
        {"", [] { return SetFileAttributesW(TEXT("/T/a?b"), 0x20); }, 123, nullptr},
        {"f=1", [] { return SetFileAttributesW(TEXT("/T/f/"), 0x20); }, 123, nullptr},
    });
}

BOOL opens(LPCWSTR path, LPCWSTR mode) {
    FILE* file = _wfopen(path, mode);
    if (file == nullptr)
        return FALSE;
    return std::fclose(file) == 0;
}

TEST(Files, Open) {
    run({
        {"f=1", [] { return opens(TEXT("/T/f"), TEXT("rb")); }, 0, nullptr},
        {"f=1", [] { return opens(TEXT("/T/a\\..//f"), TEXT("rb,ccs=UTF-16LE")); }, 0, nullptr},
        {"!f=1", [] { return opens(TEXT("/T/f"), TEXT("rb")); }, 0, nullptr},
        {"f=12345", [] { return opens(TEXT("/T/f"), TEXT("w")); }, 0, "f="},
        {"", [] { return opens(TEXT("/T/f"), TEXT("w")); }, 0, "f="},
        // As root, Wine opens a read-only file for writing.
        {"!f=1", [] { return opens(TEXT("/T/f"), TEXT("w")); }, 5, nullptr, true},
        {"f/", [] { return opens(TEXT("/T/f"), TEXT("w")); }, 5, nullptr},
        {"f/", [] { return opens(TEXT("/T/f"), TEXT("rb")); }, 5, nullptr},
        {"", [] { return opens(TEXT("/T/f"), TEXT("rb")); }, 2, nullptr},
        {"", [] { return opens(TEXT("/T/a/f"), TEXT("rb")); }, 3, nullptr},
        {"", [] { return opens(TEXT("/T/a/f"), TEXT("w")); }, 3, nullptr},
        {"", [] { return opens(TEXT("/T/a?b"), TEXT("rb")); }, 123, nullptr},
        {"", [] { return opens(TEXT("/T/a<b"), TEXT("w")); }, 123, nullptr},
        {"f=1", [] { return opens(TEXT("/T/f/"), TEXT("rb")); }, 123, nullptr},
        {"F=1", [] { return opens(TEXT("/T/f"), TEXT("rb")); }, 0, nullptr},
    });
}

std::vector<std::string> find(LPCWSTR pattern, DWORD& error) {
    std::vector<std::string> names;
    WIN32_FIND_DATAW found{};
    SetLastError(0);
    const HANDLE search = FindFirstFileW(pattern, &found);
    if (search == INVALID_HANDLE_VALUE) {
        error = GetLastError();
        return names;
    }
    do
        names.push_back(narrow(found.cFileName));
    while (FindNextFileW(search, &found));
    error = GetLastError();
    EXPECT_TRUE(FindClose(search));
    return names;
}

TEST(Listing, ReturnsNamesOrAnError) {
    const DeviceFolder device;
    device.write("T/b", "12345");
    device.write("T/a");
    device.write("T/!c");
    device.makeFolder("T/d/e");
    device.makeFolder("T/empty");

    struct Listed {
        LPCWSTR pattern;
        DWORD error;
        std::vector<std::string> names;
        bool differsOnWine = false;
    };
    const Listed cases[] = {
        {TEXT("/T/*"), 18, {".", "..", "!c", "a", "b", "d", "empty"}},
        {TEXT("\\T\\\\d/../*"), 18, {".", "..", "!c", "a", "b", "d", "empty"}},
        {TEXT("/T/empty/*"), 18, {".", ".."}},
        {TEXT("/T/b"), 18, {"b"}},
        {TEXT("/T/d"), 18, {"d"}},
        {TEXT("/T/d/"), 2, {}},
        {TEXT("/"), 2, {}},
        {TEXT("/T/gone"), 2, {}},
        {TEXT("/T/gone/x"), 3, {}},
        {TEXT("/T/gone/*"), 3, {}},
        // Wine returns 123.
        {TEXT("/T/b/*"), 267, {}, true},
        {TEXT("/T/b/x"), 267, {}, true},
        {TEXT("/T/b/x/*"), 3, {}},
        {TEXT(""), 3, {}},
        {TEXT("/t/D/*"), 18, {".", "..", "e"}},
        {TEXT("/T/B"), 18, {"b"}},
        {TEXT("/T/a?c"), 2, {}},
        {TEXT("/T/gone/a?c"), 3, {}},
        {TEXT("/T/a?c/*"), 123, {}},
    };
    for (const Listed& test : cases) {
        SCOPED_TRACE(narrow(test.pattern));
        if (test.differsOnWine && underWine())
            continue;
        DWORD error = 0;
        EXPECT_EQ(find(test.pattern, error), test.names);
        EXPECT_EQ(error, test.error);
    }
    EXPECT_FALSE(FindClose(INVALID_HANDLE_VALUE));
    EXPECT_EQ(GetLastError(), DWORD{6});
}

}  // namespace
