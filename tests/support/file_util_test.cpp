// Listings, and the text forms of sizes and file times.

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

TEST(ListDirectory, YieldsFilesFoldersOrBoth) {
    const DeviceFolder device;
    device.write("T/b.txt");
    device.write("T/a");
    device.makeFolder("T/sub/deeper");
    EXPECT_EQ(names(listDirectory("/T/", true, true)), (Names{"a", "b.txt", "sub"}));
    EXPECT_EQ(names(listDirectory("\\T\\", false, true)), (Names{"a", "b.txt"}));
    EXPECT_EQ(names(listDirectory("/T\\/", true, false)), (Names{"sub"}));
    EXPECT_TRUE(listDirectory("/T/", false, false).empty());
    for (const char* folder : {"", "/gone/", "/T/a/", "/T/sub/deeper/", "/T/su/b"})
        EXPECT_TRUE(listDirectory(folder, true, true).empty()) << folder;

    const std::uintmax_t size = (std::uintmax_t{5} << 30) + 1;
    std::filesystem::resize_file(device.root() / "T/a", size);
    EXPECT_EQ(listDirectory("/T/", false, true).at(0).size, size);
}

TEST(ListDirectory, LooksIntoPathsOfUpTo258Characters) {
    const DeviceFolder device;
    const std::string start = "/T/" + std::string(120, 'a') + "/";
    for (const std::size_t length : {258U, 259U, 260U, 300U}) {
        const std::string folder = start + std::string(length - start.size() - 1, 'b') + "/";
        device.write(folder + "f");
        const Names expected = length == 258 ? Names{"f"} : Names{};
        EXPECT_EQ(names(listDirectory(folder, true, true)), expected) << length;
    }
}

TEST(FileTimes, AreTheLocalTimesOfTheLastChangeAndOfCreation) {
    const DeviceFolder device;
    SYSTEMTIME before{};
    SYSTEMTIME after{};
    GetLocalTime(&before);
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

    // Changed long ago, but made now.
    const std::filesystem::path path = device.root() / "T/file";
    std::filesystem::last_write_time(
        path, std::filesystem::last_write_time(path) - std::chrono::hours(24 * 400));
    EXPECT_TRUE(isNow(fileTimeText("/T/file"))) << fileTimeText("/T/file");
    EXPECT_FALSE(isNow(lastWrite()));
    EXPECT_NE(fileTimeText("\\T"), "");
}

TEST(FileTimes, HaveNoTextWithoutAFile) {
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
