// Tests that the diagnosis of a returned instrument is right: the step at which its update stopped,
// and the actions that repair it.

#include <gtest/gtest.h>

#include "platform/posix/files/read_file.h"
#include "tests/helpers/device_folder.h"
#include "tools/diagnosis/diagnosis.h"

namespace {

const std::string OPENED = "Opening log at 2026/11/24 22:44\n";
const std::string FAILED = OPENED + "\n    *** ERROR *** Update failed.\n\n";
const std::string SUCCEEDED = OPENED + "  ** Warning ** Update succeeded at 2026/11/24 22:44\n";

struct Instrument {
    std::vector<const char*> files;  // below FlashDisk/VELD
    std::string log;
    const char* step;
    const char* advice;  // the actions and their folders
    int contradictions = 0;
};

constexpr const char* APP = "KSTRL/KSTRL.exe";
constexpr const char* OLD_APP = "KSTRL_old/KSTRL.exe";
constexpr const char* GUI = "ORBUI/data/a";
constexpr const char* OLD_GUI = "ORBUI_old/data/a";
constexpr const char* NEW_APP = "Update/KSTRL/KSTRL.exe";
constexpr const char* NEW_GUI = "Update/ORBUI/data/a";

const Instrument INSTRUMENTS[] = {
    {{APP, GUI}, SUCCEEDED, "none", "start"},
    {{APP, OLD_APP, GUI, OLD_GUI}, "", "none", "start"},
    {{APP, OLD_APP, GUI, OLD_GUI}, FAILED, "none", "update-again"},
    {{APP, GUI, NEW_APP, NEW_GUI}, OPENED, "copying", "remove Update, update-again"},
    {{OLD_APP, GUI, NEW_APP, NEW_GUI},
     OPENED,
     "application-moved",
     "save KSTRL_old, rename KSTRL_old, remove Update, update-again"},
    {{APP, OLD_APP, GUI, NEW_GUI}, OPENED, "application-replaced", "remove Update, update-again"},
    {{APP, OLD_APP, OLD_GUI, NEW_GUI},
     OPENED,
     "gui-data-moved",
     "save ORBUI_old, rename ORBUI_old, remove Update, update-again"},
    {{APP, OLD_APP, GUI, OLD_GUI, NEW_APP}, FAILED, "gui-data-only", "remove Update, update-again"},
    {{NEW_APP, NEW_GUI}, "", "unclear", "save Update, remove Update, update-again", 1},
    {{"KSTRL/lost.exe", OLD_APP, GUI}, SUCCEEDED, "none", "save KSTRL_old, update-again"},
    {{APP, NEW_APP, NEW_GUI}, SUCCEEDED, "unclear", "remove Update, update-again", 2},
};

TEST(Diagnosis, FindsWhereAnUpdateStoppedAndItsRepair) {
    for (const Instrument& instrument : INSTRUMENTS) {
        const DeviceFolder device;
        for (const char* const file : instrument.files)
            device.write(std::string("FlashDisk/VELD/") + file, "bytes");
        device.write("FlashDisk/VELD/Updater-log.txt", instrument.log);
        const Diagnosis diagnosis = diagnose(device.root());
        std::string advice;
        for (const Advice& step : diagnosis.advice)
            advice += (advice.empty() ? "" : ", ") + std::string(nameOf(step.action)) +
                      (step.folder.empty() ? "" : " " + step.folder);
        EXPECT_EQ(advice, instrument.advice) << instrument.step;
        EXPECT_STREQ(textOf(diagnosis.step).name, instrument.step) << advice;
        EXPECT_EQ(diagnosis.contradictions.size(), instrument.contradictions) << advice;
    }
}

TEST(Diagnosis, ComparesWithTheKeyThatWasInstalled) {
    const DeviceFolder device;
    for (const char* const file : {APP, GUI, "ORBUI/data/extra"})
        device.write(std::string("FlashDisk/VELD/") + file, "bytes");
    for (const char* const file : {APP, "KSTRL/lost", GUI})
        device.write(std::string("key/VELD/") + file, file == GUI ? "other" : "bytes");
    const Diagnosis diagnosis = diagnose(device.root(), device.root() / "key");
    EXPECT_EQ(diagnosis.comparison->different, std::vector<std::string>{GUI});
    EXPECT_EQ(diagnosis.comparison->missing, std::vector<std::string>{"KSTRL/lost"});
    EXPECT_EQ(diagnosis.comparison->tooMany, std::vector<std::string>{"ORBUI/data/extra"});
    EXPECT_STREQ(nameOf(diagnosis.advice.back().action), "update-again");
    EXPECT_THROW(diagnose(device.root() / "key/VELD/KSTRL"), std::runtime_error);
}

TEST(ReadLog, KnowsEveryLogLineInTheReadme) {
    const LogReading reading =
        readLog(OPENED + "    *** ERROR *** Error 145 ::RemoveDirectory(/a)\n\x1b[31mred\n");
    ASSERT_EQ(reading.lines.size(), 3U);
    EXPECT_NE(reading.lines[1].meaning.find("145: the folder is not empty"), std::string::npos);
    EXPECT_EQ(reading.lines[2].text, "\\x1b[31mred") << "a terminal must not obey a log";
    EXPECT_EQ(reading.lines[2].meaning, "");
    const std::string readme = host::readFile(README);
    for (const LogLineKind& kind : LOG_LINE_KINDS) {
        std::string row = std::string("| `") + kind.pattern + "` | " + kind.meaning + " |";
        for (std::size_t at = 0; (at = row.find('%')) != std::string::npos;)
            row.replace(at, 1, "...");
        EXPECT_NE(readme.find(row), std::string::npos) << row;
    }
}

}  // namespace
