// Tests that the diagnosis of a returned instrument is right: the step at which its update stopped,
// and the actions that repair it.

#include <gtest/gtest.h>

#include <regex>

#include "platform/posix/files/read_file.h"
#include "tests/helpers/device_folder.h"
#include "tests/updatekey/sound_key.h"
#include "tools/diagnosis/diagnosis.h"
#include "tools/host/folder_tree.h"

namespace {

namespace fs = std::filesystem;

const std::string OPENED = "Opening log at 2026/11/24 22:44\n";
const std::string FAILED = OPENED + "\n    *** ERROR *** Update failed.\n\n";
const std::string SUCCEEDED = OPENED + "  ** Warning ** Update succeeded at 2026/11/24 22:44\n";

struct Instrument {
    std::vector<const char*> files;  // below FlashDisk/VELD
    std::string log;
    const char* step;
    const char* findings;
    const char* advice;  // the actions and their folders
};

constexpr const char* APP = "KSTRL/KSTRL.exe";
constexpr const char* OLD_APP = "KSTRL_old/KSTRL.exe";
constexpr const char* GUI = "ORBUI/data/a";
constexpr const char* OLD_GUI = "ORBUI_old/data/a";
constexpr const char* NEW_APP = "Update/KSTRL/KSTRL.exe";
constexpr const char* NEW_GUI = "Update/ORBUI/data/a";
const std::string NOT_COPIED = "\n    *** ERROR *** Error 2 ::SetFileAttributes\n\n";

const Instrument INSTRUMENTS[] = {
    {{APP, GUI}, SUCCEEDED, "none", "", "start"},
    {{APP, OLD_APP, GUI, OLD_GUI}, "", "none", "", "start"},
    {{APP, OLD_APP, GUI, OLD_GUI}, FAILED, "none", "", "update-again"},
    {{APP, GUI, NEW_APP, NEW_GUI},
     OPENED,
     "copying",
     "",
     "check-disk, remove Update, update-again"},
    {{OLD_APP, GUI, NEW_APP, NEW_GUI},
     OPENED,
     "application-moved",
     "no-application-folder",
     "check-disk, save KSTRL_old, rename KSTRL_old, remove Update, update-again"},
    {{APP, OLD_APP, GUI, NEW_GUI},
     OPENED,
     "application-replaced",
     "",
     "check-disk, remove Update, update-again"},
    {{APP, OLD_APP, OLD_GUI, NEW_GUI},
     OPENED,
     "gui-data-moved",
     "no-gui-folder",
     "check-disk, save ORBUI_old, save KSTRL_old, rename ORBUI_old, remove Update, update-again"},
    {{APP, OLD_APP, GUI, OLD_GUI, NEW_APP},
     FAILED,
     "gui-data-only",
     "",
     "check-disk, remove Update, update-again"},
    {{NEW_APP, NEW_GUI},
     "",
     "unclear",
     "log-contradicts no-application-folder no-gui-folder",
     "check-disk, save Update, remove Update, update-again"},
    {{"KSTRL/lost.exe", OLD_APP, GUI},
     SUCCEEDED,
     "none",
     "no-application",
     "save KSTRL_old, update-again"},
    {{APP, NEW_APP, NEW_GUI},
     SUCCEEDED,
     "unclear",
     "log-contradicts no-gui-folder",
     "check-disk, save Update, remove Update, update-again"},

    // Names are found without regard to case, and the advice names them as they are written.
    {{"Kstrl/KSTRL.EXE", "orbui/DATA/a"}, SUCCEEDED, "none", "", "start"},
    {{"Kstrl_OLD/KSTRL.exe", GUI},
     OPENED,
     "unclear",
     "no-application-folder",
     "check-disk, save Kstrl_OLD, rename Kstrl_OLD, update-again"},

    // Instruments that are broken although no update was interrupted.
    {{APP, OLD_APP, GUI, OLD_GUI},
     OPENED + NOT_COPIED + SUCCEEDED,
     "none",
     "disk-space files-not-copied",
     "save KSTRL_old, save ORBUI_old, update-again"},
    {{APP, OLD_GUI, "ORBUI/readme"},
     SUCCEEDED,
     "none",
     "gui-data-empty",
     "save ORBUI_old, update-again"},
    {{"KSTRL", OLD_APP, GUI},
     FAILED,
     "unclear",
     "no-application-folder not-a-folder",
     "check-disk, save KSTRL_old, remove KSTRL, rename KSTRL_old, update-again"},
    {{APP, GUI, "Update/a", "Update/b"},
     FAILED,
     "unclear",
     "stray-files",
     "check-disk, remove Update, update-again"},
    {{APP, GUI}, "make: all\n", "none", "log-odd", "start"},
};

std::string adviceOf(const Diagnosis& diagnosis) {
    std::string advice;
    for (const Advice& step : diagnosis.advice)
        advice += (advice.empty() ? "" : ", ") + std::string(nameOf(step.action)) +
                  (step.folder.empty() ? "" : " " + step.folder);
    return advice;
}

std::string findingsOf(const Diagnosis& diagnosis) {
    std::string all;
    for (const std::string& code : codesOf(diagnosis.findings))
        all += (all.empty() ? "" : " ") + code;
    return all;
}

TEST(Diagnosis, FindsWhereAnUpdateStoppedAndItsRepair) {
    for (const Instrument& instrument : INSTRUMENTS) {
        const DeviceFolder device;
        for (const char* const file : instrument.files)
            device.write(std::string("FlashDisk/VELD/") + file, "bytes");
        device.write("FlashDisk/VELD/Updater-log.txt", instrument.log);
        const Diagnosis diagnosis = diagnose(device.root());
        EXPECT_EQ(adviceOf(diagnosis), instrument.advice) << instrument.step;
        EXPECT_EQ(findingsOf(diagnosis), instrument.findings) << instrument.advice;
        EXPECT_STREQ(textOf(diagnosis.step).name, instrument.step) << instrument.advice;
    }
}

TEST(Diagnosis, NamesAFullDisk) {
    const DeviceFolder device;
    writeSoundKey(device.root() / "key");
    device.write(std::string("FlashDisk/VELD/") + APP, "bytes");
    device.write(std::string("FlashDisk/VELD/") + GUI, "bytes");
    DiagnoseOptions options;
    options.key = device.root() / "key";
    options.disk = fs::space_info{5000000, 1000, 1000};
    const Diagnosis diagnosis = diagnose(device.root(), options);
    EXPECT_EQ(findingsOf(diagnosis), "disk-full");
    EXPECT_NE(diagnosis.findings[0].text.find("1000 of 5000000 bytes free"), std::string::npos);
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

// Every line that the program logs must have a meaning for the technician, and no other line.
TEST(LogLineKinds, AreThoseOfTheProgram) {
    std::set<std::string> logged;
    const std::regex call("(error|warning)\\(\\s*\"([^\"]+)\"");
    for (const char* const folder : {"app", "ui", "update", "render", "support"}) {
        for (const TreeEntry& entry : readTree(fs::path(SOURCES) / folder)) {
            const std::string text = host::readFile(fs::path(SOURCES) / folder / entry.path);
            for (std::sregex_iterator at(text.begin(), text.end(), call), end; at != end; ++at) {
                const bool isError = (*at)[1] == "error";
                std::string line =
                    (isError ? "    *** ERROR *** " : "  ** Warning ** ") +
                    std::regex_replace((*at)[2].str(), std::regex("%[0-9]*[a-zA-Z]"), "%");
                logged.insert(std::regex_replace(line, std::regex("\\\\n$"), ""));
            }
        }
    }
    std::set<std::string> explained;
    for (const LogLineKind& kind : LOG_LINE_KINDS)
        if (kind.pattern != std::string("Opening log at %"))
            explained.insert(kind.pattern);
    EXPECT_EQ(explained, logged);
}

}  // namespace
