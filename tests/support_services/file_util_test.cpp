// Listings, and the text forms of sizes and file times.

#include "support/file_util.h"

#include <gtest/gtest.h>

#include "support/time_util.h"
#include "tests/support/device_folder.h"

namespace {

using Names = std::vector<std::string>;

Names names(const std::vector<FileEntry>& entries) {
    Names result;
    for (const FileEntry& entry : entries)
        result.push_back(entry.name);
    return result;
}

TEST(ListDirectory, YieldsFilesFoldersOrBoth) {
    const DeviceFolder device;
    device.write("T/b.txt", "12345");
    device.write("T/a");
    device.makeFolder("T/sub/deeper");
    EXPECT_EQ(names(listDirectory("/T/", true, true)), (Names{"a", "b.txt", "sub"}));
    EXPECT_EQ(names(listDirectory("\\T\\", false, true)), (Names{"a", "b.txt"}));
    EXPECT_EQ(names(listDirectory("/T\\/", true, false)), (Names{"sub"}));
    EXPECT_TRUE(listDirectory("/T/", false, false).empty());
    EXPECT_EQ(listDirectory("/T/", false, true)[1].size, std::uint64_t{5});
}

TEST(ListDirectory, IsEmptyForWhatCannotBeSearched) {
    const DeviceFolder device;
    device.write("T/file");
    device.makeFolder("T/empty");
    for (const char* folder : {"", "/gone/", "/T/gone/", "/T/file/", "/T/empty/", "/T/fil/e"})
        EXPECT_TRUE(listDirectory(folder, true, true).empty()) << folder;
}

TEST(ListDirectory, SizesDoNotEndAtFourGigabytes) {
    const DeviceFolder device;
    device.write("T/large");
    const std::uintmax_t size = (std::uintmax_t{5} << 30) + 1;
    std::filesystem::resize_file(device.root() / "T/large", size);
    EXPECT_EQ(listDirectory("/T/", false, true).at(0).size, size);
}

TEST(ListDirectory, GivesTheLocalTimeOfTheLastChange) {
    const DeviceFolder device;
    SYSTEMTIME before{};
    SYSTEMTIME after{};
    GetLocalTime(&before);
    device.write("T/file");
    GetLocalTime(&after);
    const std::string time = formatTime(listDirectory("/T/", false, true).at(0).lastWrite);
    EXPECT_TRUE(time == formatTime(before) || time == formatTime(after)) << time;
}

// A folder path of `length` characters, its separator included; made if it can be.
std::string longFolder(const DeviceFolder& device, std::size_t length, bool make) {
    std::string path = "/T/" + std::string(120, 'a') + "/";
    path += std::string(length - path.size() - 1, 'b') + "/";
    if (make)
        device.write(path + "f");
    return path;
}

TEST(ListDirectory, LooksIntoPathsOfUpTo258Characters) {
    const DeviceFolder device;
    EXPECT_EQ(names(listDirectory(longFolder(device, 258, true), true, true)), Names{"f"});
    for (const std::size_t length : {259U, 260U, 300U})
        EXPECT_TRUE(listDirectory(longFolder(device, length, true), true, true).empty()) << length;
}

TEST(FileTimeText, IsTheTimeOfCreation) {
    if (underWine())
        GTEST_SKIP() << "Wine keeps no times of creation.";
    const DeviceFolder device;
    SYSTEMTIME before{};
    SYSTEMTIME after{};
    GetLocalTime(&before);
    device.write("T/file");
    GetLocalTime(&after);
    // Changed long ago, but made now.
    const std::filesystem::path path = device.root() / "T/file";
    std::filesystem::last_write_time(
        path, std::filesystem::last_write_time(path) - std::chrono::hours(24 * 400));
    const std::string time = fileTimeText("/T/file");
    EXPECT_TRUE(time == formatTime(before) || time == formatTime(after)) << time;
    EXPECT_NE(formatTime(listDirectory("/T/", false, true).at(0).lastWrite), time);
    EXPECT_NE(fileTimeText("\\T"), "");
}

TEST(FileTimeText, IsEmptyWithoutAFile) {
    const DeviceFolder device;
    device.makeFolder("T");
    for (const std::string& path : {std::string(), std::string("/T/gone"), std::string("/T/"),
                                    "/" + std::string(259, 'x'), "/" + std::string(258, 'x')})
        EXPECT_EQ(fileTimeText(path), "");
}

TEST(SizeText, BeginsEachUnitAboveItsSize) {
    struct Case {
        int64_t bytes;
        const char* text;
    };
    const Case cases[] = {
        {0, "0 bytes"},         {-5, "-5 bytes"},       {INT64_MIN, "-9223372036854775808 bytes"},
        {1024, "1024 bytes"},   {1025, "1KB"},          {2047, "1KB"},
        {1'048'576, "1024KB"},  {1'048'577, "1MB"},     {1'073'741'824, "1024MB"},
        {1'073'741'825, "1GB"}, {3'000'000'000, "2GB"}, {INT64_MAX, "8589934591GB"},
    };
    for (const Case& test : cases)
        EXPECT_EQ(sizeText(test.bytes), test.text);
}

}  // namespace
