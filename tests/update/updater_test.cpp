// The update procedure, on a device folder.

#include "platform/win32.h"
#include "tests/helpers/log_text.h"
#include "tests/helpers/update_on_device.h"

namespace {

class Update : public UpdateOnDevice {
  protected:
    void SetUp() override {
        UpdateOnDevice::SetUp();
        device.write("FlashDisk/VELD/KSTRL/gone.dll", "not on the key");
        device.write("USB HD/VELD/KSTRL/lib.dll", "library 2");
        device.write("USB HD/VELD/ORBUI/data/lang/StringTable_en.txt", "texts 2");
    }

    const Tree newApplication = {{"KSTRL.exe", "application 2"}, {"lib.dll", "library 2"}};
    const Tree newGuiData = {{"data/", ""},
                             {"data/bg.raw", "picture 2"},
                             {"data/lang/", ""},
                             {"data/lang/StringTable_en.txt", "texts 2"}};

    void expectUpdated() const {
        EXPECT_EQ(device.tree("FlashDisk/VELD/KSTRL"), newApplication);
        EXPECT_EQ(device.tree("FlashDisk/VELD/ORBUI"), newGuiData);
        EXPECT_FALSE(device.exists("FlashDisk/VELD/Update"));
    }
};

TEST_F(Update, ReplacesTheFoldersAndKeepsTheOldOnes) {
    const Tree application = device.tree("FlashDisk/VELD/KSTRL");
    const Tree guiData = device.tree("FlashDisk/VELD/ORBUI");
    for (const char* const tooDeep : {"KSTRL/sub/x", "ORBUI/data/lang/extra/x", "ORBUI/x"})
        device.write(std::string("USB HD/VELD/") + tooDeep);
    const Tree key = device.tree("USB HD");

    EXPECT_EQ(run(), UpdateComplete);

    expectUpdated();
    EXPECT_EQ(device.tree("FlashDisk/VELD/KSTRL_old"), application);
    EXPECT_EQ(device.tree("FlashDisk/VELD/ORBUI_old"), guiData);
    EXPECT_EQ(device.tree("USB HD"), key);
    EXPECT_NE(log().find("\n  ** Warning ** Update succeeded at 2"), std::string::npos) << log();
    EXPECT_EQ(log().find("ERROR"), std::string::npos);
}

TEST_F(Update, CopiesOneFileAStepAndFinishesInTheStepAfterTheLast) {
    std::filesystem::remove(device.root() / "USB HD/VELD/KSTRL/lib.dll");
    Updater updater;
    updater.step();
    EXPECT_EQ(updater.getState(), WaitingForMedia);
    updater.pollMedia();
    EXPECT_EQ(updater.getProgress(), 0);
    updater.startUpdate();

    const std::pair<int, std::string> steps[] = {
        {33, "ORBUI/data/bg.raw"}, {66, "ORBUI/data/lang\\StringTable_en.txt"}, {100, ""}};
    EXPECT_EQ(updater.getProgress(), 0);
    EXPECT_EQ(updater.getCurrentFile(), "KSTRL/KSTRL.exe");
    for (const auto& [progress, current] : steps) {
        updater.step();
        EXPECT_EQ(updater.getProgress(), progress);
        EXPECT_EQ(updater.getCurrentFile(), current);
        EXPECT_EQ(updater.getState(), Updating);
        EXPECT_EQ(device.read("FlashDisk/VELD/KSTRL/KSTRL.exe"), "application 1");
    }
    updater.step();
    EXPECT_EQ(updater.getState(), UpdateComplete);
    const Tree after = device.tree("FlashDisk");
    updater.step();
    EXPECT_EQ(device.tree("FlashDisk"), after);
}

TEST_F(Update, ReadOnlyFilesAreNoObstacle) {
    for (const char* backup : {"FlashDisk/VELD/KSTRL_old/x", "FlashDisk/VELD/ORBUI_old/data/y"}) {
        device.write(backup, "oldest");
        device.setReadOnly(backup);
    }
    device.setReadOnly("USB HD/VELD/KSTRL/KSTRL.exe");
    device.setReadOnly("FlashDisk/VELD/KSTRL/KSTRL.exe");

    EXPECT_EQ(run(), UpdateComplete);

    expectUpdated();
    EXPECT_FALSE(device.exists("FlashDisk/VELD/KSTRL_old/x"));
    EXPECT_EQ(GetFileAttributesW(TEXT("/FlashDisk/VELD/KSTRL/KSTRL.exe")) & FILE_ATTRIBUTE_READONLY,
              0U);
}

TEST_F(Update, AStagingFolderLeftBehindIsUsedAgain) {
    device.write("FlashDisk/VELD/Update/KSTRL/KSTRL.exe", "half");
    device.write("FlashDisk/VELD/Update/KSTRL/stray", "from another key");
    EXPECT_EQ(run(), UpdateComplete);
    EXPECT_EQ(device.read("FlashDisk/VELD/KSTRL/KSTRL.exe"), "application 2");
    EXPECT_EQ(device.read("FlashDisk/VELD/KSTRL/stray"), "from another key");
}

struct Oddity {
    const char* name;
    const char* stray;    // a file that is there too
    const char* missing;  // a folder that is not
    UpdateState end;
    std::string error;
};

std::ostream& operator<<(std::ostream& out, const Oddity& oddity) {
    return out << oddity.name;
}

class OddDevice : public Update, public ::testing::WithParamInterface<Oddity> {};

// What is on the key is installed in all these cases, whatever the end is called.
TEST_P(OddDevice, IsUpdatedAllTheSame) {
    const Oddity& odd = GetParam();
    Logger::instance().setPath("/log.txt");
    std::filesystem::remove_all(device.root() / odd.missing);
    device.write(odd.stray);
    EXPECT_EQ(run(), odd.end);
    EXPECT_EQ(device.tree("FlashDisk/VELD/KSTRL"), newApplication);
    EXPECT_EQ(device.tree("FlashDisk/VELD/ORBUI"), newGuiData);
    const std::string log = logMessages(device, "log.txt");
    EXPECT_NE(log.find("\n    *** ERROR *** Error " + odd.error + "\n"), std::string::npos) << log;
    const std::string failure = "\n    *** ERROR *** Update failed.\n\n";
    const bool saysFailed = log.substr(log.size() - failure.size()) == failure;
    EXPECT_EQ(saysFailed, odd.end == UpdateFailed);
    EXPECT_EQ(log.find("Update succeeded at ") == std::string::npos, saysFailed);
}

// The flag of a folder's failed move is forgotten when the next one goes well: without an
// application the update succeeds, without GUI data it fails.
INSTANTIATE_TEST_SUITE_P(
    Odd, OddDevice,
    ::testing::Values(Oddity{"StrayStagingFolder", "FlashDisk/VELD/Update/OTHER/x", "absent",
                             UpdateFailed, "145 ::RemoveDirectory(/FlashDisk/VELD/Update)"},
                      Oddity{"NoApplication", "FlashDisk/x", "FlashDisk/VELD/KSTRL", UpdateComplete,
                             "2 ::MoveFile: /FlashDisk/VELD/KSTRL -> /FlashDisk/VELD/KSTRL_old :"},
                      Oddity{"NoGuiData", "FlashDisk/x", "FlashDisk/VELD/ORBUI", UpdateFailed,
                             "2 ::MoveFile: /FlashDisk/VELD/ORBUI -> /FlashDisk/VELD/ORBUI_old :"},
                      Oddity{"NothingAtAll", "FlashDisk/x", "FlashDisk/VELD", UpdateFailed,
                             "2 ::MoveFile: /FlashDisk/VELD/ORBUI -> /FlashDisk/VELD/ORBUI_old :"}),
    [](const auto& test) { return test.param.name; });

}  // namespace
