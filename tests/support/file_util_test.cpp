// Tests that a listing, on which the whole update relies, has every entry and no other, and that
// sizes and times are formatted correctly.

#include "support/file_util.h"

#include <gtest/gtest.h>

#include "support/time_util.h"
#include "tests/helpers/device_folder.h"

namespace {

using Names = std::vector<std::string>;

Names names(const std::vector<FileEntry>& entries) {
    Names result;
    for (const FileEntry& entry : entries)
        result.push_back(entry.name);
    return result;
}

TEST(ListDirectory, ReturnsFilesFoldersOrBoth) {
    const DeviceFolder device;
    device.write("T/b.txt");
    device.write("T/.a");
    device.makeFolder("T/sub/deeper");
    EXPECT_EQ(names(listDirectory("/T/", true, true)), (Names{".a", "b.txt", "sub"}));
    EXPECT_EQ(names(listDirectory("\\T\\", false, true)), (Names{".a", "b.txt"}));
    EXPECT_EQ(names(listDirectory("/T\\/", true, false)), (Names{"sub"}));
    EXPECT_TRUE(listDirectory("/T/", false, false).empty());
    for (const char* folder : {"", "/gone/", "/T/.a/", "/T/sub/deeper/", "/T/su/b"})
        EXPECT_TRUE(listDirectory(folder, true, true).empty()) << folder;

    const std::uintmax_t size = (std::uintmax_t{5} << 30) + 1;
    std::filesystem::resize_file(device.root() / "T/.a", size);
    EXPECT_EQ(listDirectory("/T/", false, true).at(0).size, size);
}

TEST(ListDirectory, SearchesPathsOfUpTo258Characters) {
    const DeviceFolder device;
    const std::string folder = "/T/" + std::string(120, 'a') + "/";
    for (const std::size_t rest : {133U, 134U}) {
        const std::string longest = folder + std::string(rest, 'b') + "/";
        device.write(longest + "f");
        EXPECT_EQ(listDirectory(longest, true, true).size(), longest.size() == 258 ? 1U : 0U);
    }
}

TEST(FileTimes, AreTheLocalTimesOfTheLastChangeAndOfCreation) {
    const DeviceFolder device;
    SYSTEMTIME before{};
    SYSTEMTIME after{};
    GetLocalTime(&before);
    Sleep(20);  // the times of files come from a clock that is up to a tick late
    device.write("T/file");
    GetLocalTime(&after);
    const auto lastWrite = [] {
        return formatTime(listDirectory("/T/", false, true).at(0).lastWrite);
    };
    const auto isNow = [&](const std::string& time) {
        return time == formatTime(before) || time == formatTime(after);
    };
    EXPECT_TRUE(isNow(lastWrite())) << lastWrite();
    if (underWine())
        GTEST_SKIP() << "Wine keeps no times of creation.";

    // Modified at another time, but created now.
    std::filesystem::last_write_time(device.root() / "T/file", {});
    EXPECT_TRUE(isNow(fileTimeText("/T/file"))) << fileTimeText("/T/file");
    EXPECT_FALSE(isNow(lastWrite()));
    for (const std::string& none :
         {std::string(), std::string("/T/gone"), std::string("/T/"), "/" + std::string(259, 'x')})
        EXPECT_EQ(fileTimeText(none), "");
}

TEST(SizeText, UsesAUnitOnlyAboveOneOfIt) {
    const std::pair<int64_t, const char*> cases[] = {
        {INT64_MIN, "-9223372036854775808 bytes"},
        {1024, "1024 bytes"},
        {1025, "1KB"},
        {1'048'576, "1024KB"},
        {1'048'577, "1MB"},
        {1'073'741'824, "1024MB"},
        {1'073'741'825, "1GB"},
    };
    for (const auto& [bytes, text] : cases)
        EXPECT_EQ(sizeText(bytes), text);
}

}  // namespace
