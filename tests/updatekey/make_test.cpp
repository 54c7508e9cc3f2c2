// Tests that a new key is complete and reproducible, or not created at all. Half a key would
// install half an update in the field.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>
#include <stdexcept>

#include "tests/helpers/device_folder.h"
#include "tests/updatekey/sound_key.h"
#include "tools/host/folder_tree.h"
#include "tools/updatekey/make/make.h"
#include "tools/updatekey/make/manifest.h"
#include "tools/updatekey/make/notes_text.h"

namespace {

namespace fs = std::filesystem;

class MakeKey : public ::testing::Test {
  protected:
    MakeKey() {
        writeSoundKey(work.root() / "source");
        const fs::path maker = work.root() / "source/VELD";
        options.application = maker / "KSTRL";
        options.guiData = maker / "ORBUI/data";
        options.notes = maker / "kstrXReleaseNotes.txt";
        options.version = "2.14.3";
        options.out = work.root() / "key";
    }

    DeviceFolder work;
    MakeOptions options;
};

TEST_F(MakeKey, IsCompleteAndWithoutJunkFilesOrNotCreated) {
    writeFile(options.application / "plugins/a.dll", "x");
    EXPECT_FALSE(makeKey(options).written);
    EXPECT_EQ(std::distance(fs::directory_iterator(work.root()), fs::directory_iterator()), 1);
    fs::remove_all(options.application / "plugins");
    writeFile(options.out / "mine.txt", "x");
    EXPECT_THROW(makeKey(options), std::runtime_error);
    EXPECT_EQ(work.tree("key"), (Tree{{"mine.txt", "x"}}));
    fs::remove(options.out / "mine.txt");

    const std::vector<std::string> litter = {options.application / ".DS_Store",
                                             options.guiData / "__MACOSX"};
    writeFile(litter[0], "x");
    writeFile(litter[1] + "/._a", "x");
    const MakeReport report = makeKey(options);
    EXPECT_TRUE(report.written);
    EXPECT_EQ(report.leftOut, litter);
    EXPECT_FALSE(fs::exists(options.out / "VELD/KSTRL/.DS_Store"));
}

TEST_F(MakeKey, IsReproducible) {
    fs::last_write_time(options.application / "antennas.dat",
                        fs::file_time_type::clock::now() - std::chrono::hours(1000));
    makeKey(options);
    options.out = work.root() / "again";
    makeKey(options);
    EXPECT_EQ(work.tree("key"), work.tree("again"));
    for (const TreeEntry& entry : readTree(options.out))
        EXPECT_EQ(fs::last_write_time(work.root() / "key" / entry.path),
                  fs::last_write_time(options.out / entry.path));
    // FAT32 stores even seconds only.
    ::setenv("SOURCE_DATE_EPOCH", "1500000001", 1);
    options.out = work.root() / "dated";
    makeKey(options);
    ::unsetenv("SOURCE_DATE_EPOCH");
    struct stat status {};
    ASSERT_EQ(::stat((options.out / "VELD/KSTRL/KSTRL.exe").c_str(), &status), 0);
    EXPECT_EQ(status.st_mtime, 1500000000);
}

TEST(ComposeNotes, WritesWhatTheDeviceReadsAndShows) {
    const std::pair<const char*, const char*> notes[] = {
        {"KSTRL Release 3.0\r\nNews\r\n", "KSTRL Release 3.0\nNews\n"},
        {"KSTRL Release 3.0", "KSTRL Release 3.0\n"},
        {"\xEF\xBB\xBF\x5A\xC3\xBC\n", "KSTRL Release 3.0\nZ\xFC\n"},
    };
    for (const auto& [text, composed] : notes)
        EXPECT_EQ(composeNotes(text, "3.0"), composed);
    for (const char* const beyondLatin1 :
         {"\xE6\xBC\xA2\n", "\xF0\x9F\x93\x9D\n", "\x93quoted\x94\n"})
        EXPECT_THROW(composeNotes(beyondLatin1, "3.0"), std::runtime_error);
    EXPECT_THROW(composeNotes("", "3.0"), std::runtime_error);
    EXPECT_THROW(composeNotes("KSTRL Release 2.0\n", "3.0"), std::runtime_error);
    EXPECT_THROW(composeNotes("News\n", "3\n0"), std::runtime_error);
}

TEST_F(MakeKey, ChecksTheSpaceOnTheFlashDiskAndTheLanguageData) {
    const fs::path key = work.root() / "source";
    const uintmax_t needed = checkKey(key, {}).flashNeeded;
    const std::pair<uintmax_t, std::set<std::string>> sizes[] = {
        {needed, {}}, {needed - 1, {"flash-tight"}}, {needed / 3 - 1, {"flash-too-small"}}};
    CheckOptions check;
    for (const auto& [size, codes] : sizes) {
        check.flashSize = size;
        EXPECT_EQ(codesOf(checkKey(key, check).findings), codes);
    }
    fs::remove(options.guiData / "fonts/MeiryoUI_36px.fnt");
    fs::remove(options.guiData / "lang/StringTable_jp.txt");
    EXPECT_EQ(codesOf(checkKey(key, {}).findings),
              (std::set<std::string>{"font-missing", "table-missing"}));
    CheckOptions latinOnly;
    latinOnly.languages = {0, 1};
    EXPECT_EQ(codesOf(checkKey(key, latinOnly).findings), std::set<std::string>{});
}

}  // namespace
