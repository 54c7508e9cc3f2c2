// Tests that no unexpected directory entry or name on a key stops the frame loop, leads out of the
// device, fills the disk or damages the installation.

#include <sys/stat.h>

#include <fstream>
#include <functional>

#include "render/font_file.h"
#include "support/string_table.h"
#include "support/system_settings.h"
#include "tests/helpers/bytes.h"
#include "tests/helpers/update_on_device.h"

namespace fs = std::filesystem;

namespace {

using HostileKey = UpdateOnDevice;

TEST_F(HostileKey, UnexpectedEntriesAreSkippedOrCopied) {
    const fs::path key = device.root() / KEY;
    // Opening a pipe would wait for a writer.
    ASSERT_EQ(::mkfifo((key / "KSTRL/pipe").c_str(), 0600), 0);
    ASSERT_EQ(::mkfifo((key / "kstrXReleaseNotes.txt").c_str(), 0600), 0);
    fs::remove(key / "ORBUI/data/bg.raw");
    device.write(KEY + std::string("ORBUI/data/bg.raw/x"), "in a folder");
    device.write("FlashDisk/VELD/Projects/survey.dzt", "a day in the field");
    const fs::path backup = device.root() / "FlashDisk/VELD/KSTRL_old";
    fs::create_directory(backup);
    fs::create_hard_link(device.root() / "FlashDisk/VELD/Projects/survey.dzt", backup / "link");
    fs::create_symlink("../Projects", backup / "projects");
    // Two that a listing does not show, and two that an unpacked archive of Windows left.
    ASSERT_EQ(::mkfifo((backup / "pipe").c_str(), 0600), 0);
    ASSERT_EQ(::mknod((backup / "socket").c_str(), S_IFSOCK | 0600, 0), 0);
    std::ofstream(backup / "..\\Projects\\survey.dzt").close();
    fs::create_directories(backup / "..\\Projects" / "deeper");
    fs::create_symlink("../../../Projects", backup / "..\\Projects" / "deeper" / "link");
    std::ofstream(backup / "..\\Projects" / "deeper" / "f").close();

    expectUpdate("Update succeeded",
                 " KSTRL/KSTRL.exe=2 KSTRL_old/KSTRL.exe=1 ORBUI/data/bg.raw/x=r "
                 "ORBUI_old/data/bg.raw=1 Projects/survey.dzt=d");

    fs::remove_all(backup);
    for (const char* const inTheWay : {"KSTRL_old", "Update"})
        device.write(std::string("FlashDisk/VELD/") + inTheWay, "1");
    expectUpdate(
        "Error 3 ::SetFileAttributes; Error 3 ::SetFileAttributes; "
        "Error 123 ::RemoveDirectory(KSTRL_old\\); Error 183 ::MoveFile: KSTRL -> KSTRL_old :; "
        "Error 3 ::MoveFile: Update\\KSTRL -> KSTRL :; Error 3 ::MoveFile: Update\\ORBUI -> ORBUI "
        ":; "
        "Error 267 ::RemoveDirectory(Update); Update failed.; ",
        " KSTRL/KSTRL.exe=2 KSTRL_old=1 ORBUI_old/data/bg.raw/x=r Projects/survey.dzt=d Update=1");
}

// A name whose low bytes spell "../": U+012E and U+012F.
constexpr const char* UPWARDS = "\u012E\u012E\u012F";

TEST_F(HostileKey, OddNamesAreCopiedUnchangedOrSkipped) {
    Tree expected = {{"KSTRL.exe", "application 2"}};
    for (const std::string name :
         {"100% %s %n %%", "caf\xC3\xA9 \xC2\xA9", "-rf", "KSTRL Release 2", "a;b"}) {
        device.write(KEY + ("KSTRL/" + name), "content of " + name);
        expected[name] = "content of " + name;
    }
    EXPECT_EQ(run(), UpdateComplete);
    EXPECT_EQ(device.tree("FlashDisk/VELD/KSTRL"), expected);
    EXPECT_EQ(log().find("ERROR"), std::string::npos) << log();

    // Paths cannot contain these characters, nor the "?" that replaces characters above 8 bits.
    // With the last names the whole path is too long for the system.
    device.write("USB HD/survey.DZT", "overwritten");
    device.write("FlashDisk/VELD/survey.DZT", "survey");
    const std::string names[] = {"\xE6\x97\xA5\xE6\x9C\xAC",
                                 "bad \xFF\xFE utf-8",
                                 "\xF0\x9F\x92\xBE",
                                 "*",
                                 "?",
                                 "\"quoted\"",
                                 "two\nlines",
                                 "dots...",
                                 " ",
                                 std::string(UPWARDS) + UPWARDS + "survey.DZT",
                                 std::string(255, 'n')};
    for (const std::string& name : names)
        device.write(KEY + ("KSTRL/" + name), "x");
    device.write(KEY + ("ORBUI/data/" + std::string(255, 'd') + "/f"), "x");
    device.write(KEY + std::string("ORBUI/data/\u65E5/f"), "x");
    std::string leaves;
    for (const char* const folder : {" KSTRL/", " KSTRL_old/"})
        for (const auto& [name, bytes] : expected)
            leaves += folder + name + "=" + bytes.back();
    std::string says;
    for (const char* const error :
         {"123", "123", "123", "123", "2", "3", "123", "123", "123", "123"})
        says += std::string("Error ") + error + " ::SetFileAttributes; ";
    ::testing::internal::CaptureStderr();
    expectUpdate(says + "Update succeeded",
                 leaves + " ORBUI/data/bg.raw=2 ORBUI_old/data/bg.raw=2 survey.DZT=y");
    EXPECT_NE(::testing::internal::GetCapturedStderr().find(
                  "Not listed, because no path can contain such a name: "
                  "/USB HD/VELD/ORBUI/data/?\\*\n"),
              std::string::npos);
}

TEST_F(HostileKey, NamesOutsideLatin1NeverDeleteOtherFiles) {
    const std::string backup = "FlashDisk/VELD/KSTRL_old/";
    device.write("FlashDisk/VELD/survey.DZT", "survey");
    device.write(backup + UPWARDS + "survey.DZT", "x");
    // Both characters have the low byte of "/".
    device.makeFolder(backup + "\u552F");
    device.makeFolder(backup + "\u562F");
    expectUpdate(
        "Error 123 ::SetFileAttributes; Error 123 deleting file: KSTRL_old\\???survey.DZT; "
        "Error 123 ::RemoveDirectory(KSTRL_old\\?\\); Error 123 ::RemoveDirectory(KSTRL_old\\?\\); "
        "Error 145 ::RemoveDirectory(KSTRL_old\\); Error 183 ::MoveFile: KSTRL -> KSTRL_old :; "
        "Error 183 ::MoveFile: Update\\KSTRL -> KSTRL :; Error 145 ::RemoveDirectory(Update); "
        "Update failed.; ",
        std::string(" KSTRL/KSTRL.exe=1 KSTRL_old/") + UPWARDS +
            "survey.DZT=x KSTRL_old/\u552F/ KSTRL_old/\u562F/ ORBUI/data/bg.raw=2 "
            "ORBUI_old/data/bg.raw=1 Update/KSTRL/KSTRL.exe=2 survey.DZT=y");
}

// Each file has 2 GiB, most of it a hole.
TEST_F(HostileKey, EndlessFilesAreReadUpToTheirLimits) {
    struct Input {
        std::string path;
        std::string start;
        std::function<std::size_t()> load;  // returns what it has kept
        std::string told = "  ** Warning ** File % is too long; its end was not read.\n";
    };
    Updater updater;
    FontData font;
    SystemSettings::instance().dataFolder = "/T/";
    const Input inputs[] = {
        {"/USB HD/VELD/kstrXReleaseNotes.txt", "KSTRL Release 2\n",
         [&] {
             updater.pollMedia();
             EXPECT_EQ(updater.getUpdateVersion(), "2");
             return updater.getMessageLines().size();
         }},
        {"/T/lang/StringTable_en.txt", utf16Bytes(u"# a\r\nK text\r\n"),
         [] {
             EXPECT_EQ(StringTable::instance().load("StringTable_en.txt"), 0);
             return StringTable::instance().lookup("K").size() - 3;
         }},
        {"/T/f.kern", utf16Bytes(u"ab 1\r\n"),
         [&] {
             loadKerningFile("/T/f.kern", font);
             return std::size_t{font.kerning.count({'a', 'b'})};
         }},
        {"/T/f.fnt", "BMF\3",
         [&] {
             loadFontFile("/T/f.fnt", font);
             return font.glyphs.size() + 1;
         },
         "\n    *** ERROR *** Font file % is too large.\n\n\n"},
    };
    for (const Input& input : inputs) {
        SCOPED_TRACE(input.path);
        device.write(input.path, input.start);
        fs::resize_file(device.root() / input.path.substr(1), uintmax_t{1} << 31);
        const std::size_t before = log().size();
        EXPECT_EQ(input.load(), 1U);
        std::string told = input.told;
        EXPECT_EQ(log().substr(before), told.replace(told.find('%'), 1, input.path));
    }
}

}  // namespace
