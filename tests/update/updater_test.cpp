// Tests that an update copies one file per step, reports its progress, and ends in the right state.

#include "support/text.h"
#include "tests/helpers/log_text.h"
#include "tests/helpers/update_on_device.h"

namespace {

using Update = UpdateOnDevice;

// Only the GUI data has subfolders that are copied, and only one level of them. An interrupted
// update has left a file.
TEST_F(Update, CopiesOneFilePerStepAndThenFinishes) {
    device.write("USB HD/VELD/ORBUI/data/lang/StringTable_en.txt", "texts 2");
    device.write("USB HD/VELD/ORBUI/data/lang/extra/x");
    device.write("USB HD/VELD/KSTRL/sub/x");
    device.makeFolder("USB HD/VELD/ORBUI/data/empty");
    device.write("FlashDisk/VELD/Update/KSTRL/KSTRL.exe", "half an application 2");
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
    const Tree after = device.tree("FlashDisk");
    EXPECT_EQ(device.tree("FlashDisk/VELD/KSTRL"), (Tree{{"KSTRL.exe", "application 2"}}));
    EXPECT_EQ(device.tree("FlashDisk/VELD/ORBUI/data"),
              (Tree{{"bg.raw", "picture 2"},
                    {"empty/", ""},
                    {"lang/", ""},
                    {"lang/StringTable_en.txt", "texts 2"}}));
    EXPECT_TRUE(isReadOnly("/USB HD/VELD/KSTRL/KSTRL.exe"));
    EXPECT_FALSE(isReadOnly("/FlashDisk/VELD/KSTRL/KSTRL.exe"));
    updater.step();
    EXPECT_EQ(device.tree("FlashDisk"), after);
}

// In all cases the key's files are installed; only the reported outcome differs. The result for the
// GUI data overwrites that for the application: without an installed application the update
// succeeds, without GUI data it fails.
TEST_F(Update, ReportsTheResultOfTheLastFolder) {
    struct Oddity {
        const char* stray;    // an extra file
        const char* missing;  // a folder that is missing
        UpdateState end;
        std::string error;
    };
    const std::string noGuiData =
        "2 ::MoveFile: /FlashDisk/VELD/ORBUI -> /FlashDisk/VELD/ORBUI_old :";
    const Oddity oddities[] = {
        {"FlashDisk/VELD/Update/OTHER/x", "absent", UpdateFailed,
         "145 ::RemoveDirectory(/FlashDisk/VELD/Update)"},
        {"FlashDisk/x", "FlashDisk/VELD/KSTRL", UpdateComplete,
         "2 ::MoveFile: /FlashDisk/VELD/KSTRL -> /FlashDisk/VELD/KSTRL_old :"},
        {"FlashDisk/x", "FlashDisk/VELD/ORBUI", UpdateFailed, noGuiData},
        {"FlashDisk/x", "FlashDisk/VELD", UpdateFailed, noGuiData},
    };
    const std::string failure = "\n    *** ERROR *** Update failed.\n\n";
    for (const Oddity& odd : oddities) {
        SCOPED_TRACE(odd.error);
        Logger::instance().setPath("/log.txt");
        std::filesystem::remove_all(device.root() / "FlashDisk");
        SetUp();
        Logger::instance().setPath("/log.txt");
        std::filesystem::remove_all(device.root() / odd.missing);
        device.write(odd.stray);
        EXPECT_EQ(run(), odd.end);
        EXPECT_EQ(device.tree("FlashDisk/VELD/KSTRL"), (Tree{{"KSTRL.exe", "application 2"}}));
        EXPECT_EQ(device.read("FlashDisk/VELD/ORBUI/data/bg.raw"), "picture 2");
        const std::string log = logMessages(device, "log.txt");
        EXPECT_NE(log.find("\n    *** ERROR *** Error " + odd.error + "\n"), std::string::npos)
            << log;
        const bool saysFailed = log.substr(log.size() - failure.size()) == failure;
        EXPECT_EQ(saysFailed, odd.end == UpdateFailed);
        EXPECT_EQ(log.find("Update succeeded at ") == std::string::npos, saysFailed);
    }
}

}  // namespace
