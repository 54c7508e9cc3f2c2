// Whether a search yields other names or refuses with other numbers than on Windows.

#include <gtest/gtest.h>

#include <algorithm>

#include "platform/win32.h"
#include "support/text.h"
#include "tests/helpers/device_folder.h"

namespace {

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

TEST(Listing, YieldsNamesOrAnError) {
    const DeviceFolder device;
    device.write("T/b", "12345");
    device.write("T/a");
    device.write("T/!c");
    device.makeFolder("T/d/e");
    device.makeFolder("T/empty");

    struct Case {
        LPCWSTR pattern;
        DWORD error;
        std::vector<std::string> names;
        bool differsOnWine = false;
    };
    const Case cases[] = {
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
        // Wine says 123.
        {TEXT("/T/b/*"), 267, {}, true},
        {TEXT("/T/b/x"), 267, {}, true},
        {TEXT("/T/b/x/*"), 3, {}},
        {TEXT(""), 3, {}},
        {TEXT("/T/a?c"), 2, {}},
        {TEXT("/T/gone/a?c"), 3, {}},
        {TEXT("/T/a?c/*"), 123, {}},
    };
    for (const Case& test : cases) {
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
