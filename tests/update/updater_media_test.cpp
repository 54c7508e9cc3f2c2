// Tests that an incomplete key is not accepted, and that release notes are read as the instrument
// reads them.

#include "tests/helpers/update_on_device.h"

namespace {

const std::string NOTES = "USB HD/VELD/kstrXReleaseNotes.txt";

using UpdaterMedia = UpdateOnDevice;

TEST_F(UpdaterMedia, AcceptsOnlyCompleteKeys) {
    using Entries = std::vector<std::string>;  // folders end in "/"
    const std::pair<Entries, bool> keys[] = {
        {{}, false},
        {{"KSTRL/a", "ORBUI/data/b"}, true},
        {{"KSTRL/a", "ORBUI/data/lang/"}, true},  // subfolders count as data
        {{"KSTRL/sub/", "ORBUI/data/b"}, false},
        {{"KSTRL/a", "ORBUI/data/"}, false},
        {{"KSTRL/a", "ORBUI/b"}, false},
        {{"ORBUI/data/b"}, false},
        {{"KSTRL", "ORBUI/data/b"}, false},
        {{"KSTRL/a", "orbui/data/b"}, false},
    };
    for (const auto& [entries, valid] : keys) {
        SCOPED_TRACE(::testing::PrintToString(entries));
        std::filesystem::remove_all(device.root() / "USB HD");
        for (const std::string& entry : entries) {
            if (entry.back() == '/')
                device.makeFolder("USB HD/VELD/" + entry);
            else
                device.write("USB HD/VELD/" + entry);
        }
        Updater fresh;
        fresh.pollMedia();
        EXPECT_EQ(fresh.isMediaReady(), valid);
        EXPECT_EQ(fresh.getState(), valid ? ReadyToUpdate : WaitingForMedia);
        EXPECT_EQ(fresh.getUpdateVersion(), valid ? "" : "No version detected.");
    }
}

TEST_F(UpdaterMedia, ReadsVersionAndLines) {
    struct Notes {
        std::string bytes;
        std::string version;
        std::vector<std::string> lines;
    };
    const Notes cases[] = {
        {"KSTRL Release 2.14.3\r\nfirst\n\nlast\n",
         "2.14.3",
         {"KSTRL Release 2.14.3", "first", "", "last"}},
        {"KSTRL Release 3.0\nshown\nnot shown", "3.0", {"KSTRL Release 3.0", "shown"}},
        {"KSTRL Release 3.0", "3.0", {}},
        {"Version 3.0\n", "Version 3.0", {"Version 3.0"}},
        {"xx KSTRL Release 3.0\n", "se 3.0", {"xx KSTRL Release 3.0"}},
        {"KSTRL Release KSTRL Release 4\n", "KSTRL Release 4", {"KSTRL Release KSTRL Release 4"}},
        {"KSTRL Release \n", "", {"KSTRL Release "}},
        {"", "", {}},
    };
    for (const Notes& notes : cases) {
        SCOPED_TRACE(notes.bytes.substr(0, 40));
        device.write(NOTES, notes.bytes);
        Updater fresh;
        fresh.pollMedia();
        EXPECT_EQ(fresh.getUpdateVersion(), notes.version);
        EXPECT_EQ(fresh.getMessageLines(), notes.lines);
    }
}

TEST_F(UpdaterMedia, AcceptsAKeyWithoutNotesAndAppendsNotesAtEveryPoll) {
    Updater updater;
    ::testing::internal::CaptureStdout();
    updater.pollMedia();
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "Release notes not found.\n");
    EXPECT_TRUE(updater.isMediaReady());
    EXPECT_EQ(updater.getUpdateVersion(), "");
    EXPECT_TRUE(updater.getMessageLines().empty());

    device.write(NOTES, "v\n");
    updater.pollMedia();
    updater.pollMedia();
    EXPECT_EQ(updater.getMessageLines(), (std::vector<std::string>{"v", "v"}));
    // Every call checks for the key, but the state does not change back.
    std::filesystem::remove_all(device.root() / "USB HD");
    updater.pollMedia();
    EXPECT_FALSE(updater.isMediaReady());
    EXPECT_EQ(updater.getState(), ReadyToUpdate);
}

}  // namespace
