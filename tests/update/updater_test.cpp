// The update procedure, on a device folder.

#include "update/updater.h"

#include <gtest/gtest.h>

#include "platform/win32.h"
#include "support/logger.h"
#include "tests/support/device_folder.h"

namespace {

// The engine with its lists open to view.
class OpenUpdater : public Updater {
  public:
    using Updater::componentFolders;
    using Updater::filesToCopy;
    using Updater::foldersToCreate;
    using Updater::totalFiles;
};

class Update : public ::testing::Test {
  protected:
    void SetUp() override {
        device.write("FlashDisk/VELD/KSTRL/KSTRL.exe", "application 1");
        device.write("FlashDisk/VELD/KSTRL/gone.dll", "not on the key");
        device.write("FlashDisk/VELD/ORBUI/data/bg.raw", "picture 1");
        Logger::instance().setPath("/FlashDisk/VELD/Updater-log.txt");

        device.write("USB HD/VELD/KSTRL/KSTRL.exe", "application 2");
        device.write("USB HD/VELD/KSTRL/lib.dll", "library 2");
        device.write("USB HD/VELD/ORBUI/data/bg.raw", "picture 2");
        device.write("USB HD/VELD/ORBUI/data/lang/StringTable_en.txt", "texts 2");
    }

    // Runs an update to its end. Returns the state it ends in.
    int32_t run() {
        updater.pollMedia();
        updater.startUpdate();
        constexpr int steps = 100;
        for (int i = 0; i < steps && updater.getState() == Updating; ++i)
            updater.step();
        return updater.getState();
    }

    std::string log() const { return device.read("FlashDisk/VELD/Updater-log.txt"); }
    bool logHas(const std::string& text) const { return log().find(text) != std::string::npos; }

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

    DeviceFolder device;
    OpenUpdater updater;
};

TEST_F(Update, ReplacesTheFoldersAndKeepsTheOldOnes) {
    const Tree application = device.tree("FlashDisk/VELD/KSTRL");
    const Tree guiData = device.tree("FlashDisk/VELD/ORBUI");
    const Tree key = device.tree("USB HD");

    EXPECT_EQ(run(), UpdateComplete);

    expectUpdated();
    EXPECT_EQ(device.tree("FlashDisk/VELD/KSTRL_old"), application);
    EXPECT_EQ(device.tree("FlashDisk/VELD/ORBUI_old"), guiData);
    EXPECT_EQ(device.tree("USB HD"), key);
    EXPECT_TRUE(logHas("\n  ** Warning ** Update succeeded at 2"));
    EXPECT_FALSE(logHas("ERROR"));
}

TEST_F(Update, QueuesFoldersAndFilesInOrder) {
    device.write("USB HD/VELD/KSTRL/sub/not-copied");
    device.write("USB HD/VELD/ORBUI/data/lang/extra/not-copied");
    device.write("USB HD/VELD/ORBUI/not-copied");
    updater.pollMedia();
    updater.startUpdate();

    EXPECT_EQ(updater.componentFolders, std::vector<std::string>{"KSTRL"});
    EXPECT_EQ(updater.foldersToCreate,
              (std::vector<std::string>{"KSTRL/", "ORBUI/", "ORBUI/data/", "ORBUI/data/lang\\"}));
    EXPECT_EQ(updater.filesToCopy,
              (std::deque<std::string>{"KSTRL/KSTRL.exe", "KSTRL/lib.dll", "ORBUI/data/bg.raw",
                                       "ORBUI/data/lang\\StringTable_en.txt"}));
    EXPECT_EQ(updater.totalFiles, 4U);
    EXPECT_EQ(
        device.tree("FlashDisk/VELD/Update"),
        (Tree{{"KSTRL/", ""}, {"ORBUI/", ""}, {"ORBUI/data/", ""}, {"ORBUI/data/lang/", ""}}));
}

TEST_F(Update, CopiesOneFileAStepAndFinishesInTheStepAfterTheLast) {
    std::filesystem::remove(device.root() / "USB HD/VELD/KSTRL/lib.dll");
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

TEST_F(Update, StepsBeforeAKeyIsThereAreHarmless) {
    const Tree before = device.tree("FlashDisk");
    updater.step();
    EXPECT_EQ(updater.getState(), WaitingForMedia);
    EXPECT_EQ(device.tree("FlashDisk"), before);
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

TEST_F(Update, AStrayFolderInTheStagingAreaFailsTheUpdate) {
    device.write("FlashDisk/VELD/Update/OTHER/x");
    EXPECT_EQ(run(), UpdateFailed);
    EXPECT_EQ(device.read("FlashDisk/VELD/KSTRL/KSTRL.exe"), "application 2");
    EXPECT_TRUE(logHas("*** ERROR *** Error 145 ::RemoveDirectory(/FlashDisk/VELD/Update)\n"));
    const std::string end = "\n    *** ERROR *** Update failed.\n\n";
    EXPECT_EQ(log().substr(log().size() - end.size()), end);
    EXPECT_FALSE(logHas("succeeded"));
}

// The flag of the first folder's failed move is forgotten when the second goes well.
TEST_F(Update, AMissingApplicationIsInstalledAllTheSame) {
    std::filesystem::remove_all(device.root() / "FlashDisk/VELD/KSTRL");
    EXPECT_EQ(run(), UpdateComplete);
    expectUpdated();
    EXPECT_FALSE(device.exists("FlashDisk/VELD/KSTRL_old"));
    EXPECT_TRUE(
        logHas("*** ERROR *** Error 2 ::MoveFile: /FlashDisk/VELD/KSTRL -> "
               "/FlashDisk/VELD/KSTRL_old :\n"));
    EXPECT_TRUE(logHas("Update succeeded at "));
}

TEST_F(Update, MissingGuiDataFailsTheUpdateAlthoughItIsInstalled) {
    std::filesystem::remove_all(device.root() / "FlashDisk/VELD/ORBUI");
    EXPECT_EQ(run(), UpdateFailed);
    expectUpdated();
    EXPECT_TRUE(
        logHas("*** ERROR *** Error 2 ::MoveFile: /FlashDisk/VELD/ORBUI -> "
               "/FlashDisk/VELD/ORBUI_old :\n"));
}

TEST_F(Update, AnEmptyFlashDiskIsFilled) {
    Logger::instance().setPath("/FlashDisk/log.txt");
    std::filesystem::remove_all(device.root() / "FlashDisk/VELD");
    EXPECT_EQ(run(), UpdateFailed);
    expectUpdated();
}

TEST_F(Update, NamesWithPercentSignsAndLatin1LettersAreCopiedAndLoggedAsTheyAre) {
    const std::string latin1 =
        "USB HD/VELD/KSTRL/Stra\xC3\x9F"
        "e %s%n.txt";
    device.write(latin1, "x");
    device.write("FlashDisk/VELD/Update/KSTRL/100%% %n%s/x");
    EXPECT_EQ(run(), UpdateComplete);
    EXPECT_EQ(device.read("FlashDisk/VELD/KSTRL/Stra\xC3\x9F"
                          "e %s%n.txt"),
              "x");
}

}  // namespace
