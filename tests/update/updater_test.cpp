// Tests that an update copies one file per step, reports its progress, and ends in the right state.

#include "support/text.h"
#include "tests/helpers/update_on_device.h"

namespace {

using Update = UpdateOnDevice;

// Only the GUI data has subfolders that are copied, and only one level of them. An interrupted
// update has left a file, longer than the new one.
TEST_F(Update, CopiesOneFilePerStepAndThenFinishes) {
    device.write("USB HD/VELD/ORBUI/data/lang/StringTable_en.txt", "texts 2");
    for (const char* const folder : {"", "ORBUI/", "KSTRL/sub/", "ORBUI/data/lang/extra/"})
        device.write(KEY + std::string(folder) + "x");
    device.makeFolder("USB HD/VELD/ORBUI/data/empty");
    device.write("FlashDisk/VELD/Update/KSTRL/KSTRL.exe", "half of an application");
    device.setReadOnly("USB HD/VELD/KSTRL/KSTRL.exe");
    const auto isReadOnly = [](const std::string& path) {
        return (GetFileAttributesW(widen(path).c_str()) & FILE_ATTRIBUTE_READONLY) != 0;
    };
    Updater updater;
    updater.step();
    EXPECT_EQ(updater.getState(), WaitingForMedia);
    updater.pollMedia();
    EXPECT_EQ(updater.getProgress(), 0);
    updater.startUpdate();

    const std::pair<int, std::string> steps[] = {{0, "KSTRL/KSTRL.exe"},
                                                 {33, "ORBUI/data/bg.raw"},
                                                 {66, "ORBUI/data/lang\\StringTable_en.txt"},
                                                 {100, ""}};
    for (const auto& [progress, current] : steps) {
        EXPECT_EQ(updater.getProgress(), progress);
        EXPECT_EQ(updater.getCurrentFile(), current);
        EXPECT_EQ(updater.getState(), Updating);
        EXPECT_EQ(device.read("FlashDisk/VELD/KSTRL/KSTRL.exe"), "application 1");
        updater.step();
    }
    EXPECT_EQ(updater.getState(), UpdateComplete);
    const std::string whole =
        " KSTRL/KSTRL.exe=2 KSTRL_old/KSTRL.exe=1 ORBUI/data/bg.raw=2 ORBUI/data/empty/ "
        "ORBUI/data/lang/StringTable_en.txt=2 ORBUI_old/data/bg.raw=1";
    EXPECT_EQ(left(), whole);
    EXPECT_TRUE(isReadOnly("/USB HD/VELD/KSTRL/KSTRL.exe"));
    EXPECT_FALSE(isReadOnly("/FlashDisk/VELD/KSTRL/KSTRL.exe"));
    updater.step();
    EXPECT_EQ(left(), whole);
}

// When there is a flash disk, the key's files are installed; only the reported outcome differs. The
// result for the GUI data overwrites that for the application: without an installed application the
// update succeeds, without GUI data it fails.
TEST_F(Update, ReportsTheResultOfTheLastFolder) {
    struct Oddity {
        const char* stray;    // an extra file
        const char* missing;  // a folder that is missing
        std::string says;
        std::string leaves;
    };
    const std::string noApplication = "Error 2 ::MoveFile: KSTRL -> KSTRL_old :; ";
    const std::string noGuiData = "Error 2 ::MoveFile: ORBUI -> ORBUI_old :; Update failed.; ";
    const Oddity oddities[] = {
        {"FlashDisk/VELD/Update/OTHER/x", "absent",
         "Error 145 ::RemoveDirectory(Update); Update failed.; ",
         std::string(UPDATED) + " Update/OTHER/x=0"},
        {"FlashDisk/VELD/KSTRL_old/x", "FlashDisk/VELD/KSTRL", noApplication + "Update succeeded",
         " KSTRL/KSTRL.exe=2 ORBUI/data/bg.raw=2 ORBUI_old/data/bg.raw=1"},
        {"USB HD/x", "FlashDisk/VELD/ORBUI", noGuiData,
         " KSTRL/KSTRL.exe=2 KSTRL_old/KSTRL.exe=1 ORBUI/data/bg.raw=2"},
        {"USB HD/x", "FlashDisk/VELD", noApplication + noGuiData,
         " KSTRL/KSTRL.exe=2 ORBUI/data/bg.raw=2"},
        {"USB HD/x", "FlashDisk",
         "Error 3 ::SetFileAttributes; Error 3 ::SetFileAttributes; "
         "Error 3 ::MoveFile: KSTRL -> KSTRL_old :; Error 3 ::MoveFile: Update\\KSTRL -> KSTRL :; "
         "Error 3 ::MoveFile: ORBUI -> ORBUI_old :; Error 3 ::MoveFile: Update\\ORBUI -> ORBUI :; "
         "Error 3 ::RemoveDirectory(Update); Update failed.; ",
         ""},
    };
    for (const Oddity& odd : oddities) {
        Logger::instance().setPath("/log.txt");
        std::filesystem::remove_all(device.root() / "FlashDisk");
        SetUp();
        Logger::instance().setPath("/log.txt");
        std::filesystem::remove_all(device.root() / odd.missing);
        device.write(odd.stray, "0");
        expectUpdate(odd.says, odd.leaves);
    }
}

}  // namespace
