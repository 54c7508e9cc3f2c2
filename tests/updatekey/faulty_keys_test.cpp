// Tests that no faulty key passes the check: each fault must give its findings, and the device must
// behave as predicted.

#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <iterator>
#include <sstream>

#include "support/logger.h"
#include "tests/helpers/bytes.h"
#include "tests/helpers/device_folder.h"
#include "tests/updatekey/sound_key.h"
#include "tools/diagnosis/installation.h"
#include "tools/host/host_file.h"
#include "tools/host/printable.h"
#include "tools/updatekey/check/check.h"
#include "tools/updatekey/make/manifest.h"
#include "update/updater.h"

namespace {

namespace fs = std::filesystem;

using Spoil = std::function<void(const fs::path& key)>;

struct FaultyKey {
    std::string name;
    Spoil spoil;           // adds the fault to a sound key
    const char* found;     // the codes of all expected findings
    bool accepted = true;  // whether the device still accepts the key
};

const std::string KSTRL = "VELD/KSTRL/";
const std::string DATA = "VELD/ORBUI/data/";
const std::string BACKGROUND = DATA + "KSTRL-menubg4.raw";
const std::string FACE = DATA + "fonts/SegoeUI_24px.fnt";
const std::string PAGE = DATA + "fonts/page.raw";
const std::string TABLE = DATA + "lang/StringTable_";
const std::string NOTES = "VELD/kstrXReleaseNotes.txt";
const std::string FIRST_LINE = "KSTRL Release 3.0\n";

Spoil adding(const std::string& path, const std::string& bytes = "x") {
    return [=](const fs::path& key) { writeFile(key / path, bytes); };
}

Spoil removing(const std::string& path) {
    return [=](const fs::path& key) { fs::remove_all(key / path); };
}

Spoil renaming(const std::string& from, const std::string& to) {
    return [=](const fs::path& key) { fs::rename(key / from, key / to); };
}

Spoil emptying(const std::string& folder) {
    return [=](const fs::path& key) {
        fs::remove_all(key / folder);
        fs::create_directory(key / folder);
    };
}

Spoil resizing(const std::string& path, uintmax_t size) {
    return [=](const fs::path& key) {
        std::ofstream(key / path, std::ios::app).close();
        fs::resize_file(key / path, size);
    };
}

Spoil cuttingOff(const std::string& path, uintmax_t bytes) {
    return [=](const fs::path& key) {
        fs::resize_file(key / path, fs::file_size(key / path) - bytes);
    };
}

Spoil replacing(const std::string& path, const std::string& what, const std::string& by) {
    return [=](const fs::path& key) {
        std::string bytes = readHostFile(key / path);
        bytes.replace(bytes.find(what), what.size(), by);
        writeFile(key / path, bytes);
    };
}

Spoil copying(const std::string& from, const std::string& to) {
    return [=](const fs::path& key) { writeFile(key / to, readHostFile(key / from)); };
}

Spoil linking(const std::string& path) {
    return [=](const fs::path& key) { fs::create_symlink("antennas.dat", key / path); };
}

Spoil notes(const std::string& bytes) {
    return adding(NOTES, bytes);
}

std::string utf16(const std::string& text) {
    return utf16Bytes(widen(text));
}

// Replaces the end, from the eleventh character, of the Dutch text that contains the START marker.
Spoil wordedAs(const std::string& end) {
    return replacing(TABLE + "du.txt", utf16("  START"), utf16(end));
}

std::string lines(int count) {
    std::string text;
    for (int line = 0; line < count; ++line)
        text += "line\n";
    return text;
}

// Returns a path that has that length below the staging folder.
std::string deepPath(std::size_t length) {
    return DATA + "n/" + std::string(length - std::string("ORBUI/data/n/").size(), 'a');
}

// Creates the manifest before the fault is added, so that the manifest does not match the key.
Spoil afterManifest(const Spoil& spoil) {
    return [=](const fs::path& key) {
        writeFile(key / MANIFEST_NAME, toText(computeManifest(key)));
        spoil(key);
    };
}

const FaultyKey FAULTY_KEYS[] = {
    {"sound", [](const fs::path&) {}, ""},

    // Folders.
    {"no maker folder", removing("VELD"), "no-maker-folder", false},
    {"writing was interrupted", renaming("VELD", "VELD.unfinished"), "no-maker-folder", false},
    {"flash disk of an instrument", adding("VELD/Updater-log.txt"), "not-a-key not-copied"},
    {"maker folder in another case", renaming("VELD", "veld"), "name-case"},
    {"data in another case", renaming("VELD/ORBUI/data", "VELD/ORBUI/Data"), "name-case"},
    {"no application folder", removing(KSTRL), "no-application-folder", false},
    {"application folder in another case", renaming("VELD/KSTRL", "VELD/Kstrl"), "name-case",
     false},
    {"application folder empty", emptying("VELD/KSTRL"), "application-empty no-application", false},
    {"no GUI folder", removing("VELD/ORBUI"), "no-gui-folder", false},
    {"GUI folder without data", removing(DATA), "no-gui-data", false},
    {"data empty", emptying("VELD/ORBUI/data"), "gui-data-empty", false},
    {"no application", removing(KSTRL + "KSTRL.exe"), "no-application"},
    {"application in another case", renaming(KSTRL + "KSTRL.exe", KSTRL + "kstrl.exe"),
     "file-name-case"},
    {"application empty", resizing(KSTRL + "KSTRL.exe", 0), "application-damaged"},
    {"application a text", adding(KSTRL + "KSTRL.exe", "text"), "application-damaged"},
    {"application cut short", adding(KSTRL + "KSTRL.exe", programBytes(ARM, 1)),
     "application-damaged"},
    {"application of a desktop", adding(KSTRL + "KSTRL.exe", programBytes(X64)),
     "application-machine"},

    // Files that the device ignores.
    {"subfolder of the application", adding(KSTRL + "plugins/a.dll"), "not-copied"},
    {"second-level subfolder of the data", adding(DATA + "lang/extra/x"), "not-copied"},
    {"file beside data", adding("VELD/ORBUI/readme.txt"), "not-copied"},
    {"litter of one desktop", adding(KSTRL + "._KSTRL.exe"), "litter"},
    {"litter of another", adding(DATA + "fonts/Thumbs.db"), "litter"},
    {"litter of an editor", adding(KSTRL + "~$notes.doc"), "litter"},
    {"litter of a compiler", adding(KSTRL + "KSTRL.pdb"), "litter"},
    {"litter where nothing is copied", adding(".DS_Store"), ""},
    {"link", linking(KSTRL + "link"), "not-a-file"},

    // Names and sizes.
    {"case clash", adding(KSTRL + "Antennas.dat"), "case-clash"},
    {"one name the other's short name",
     [](const fs::path& key) {
         adding(KSTRL + "Antennas-long.dat")(key);
         adding(KSTRL + "ANTENN~1.DAT")(key);
     },
     "short-name-clash"},
    {"Latin-1 is fine", adding(KSTRL + "k\xC3\xA4the.dat"), ""},
    {"outside Latin-1, another's name for the device", adding(KSTRL + "antennas.da\xC5\xB4"),
     "name-not-latin1"},
    {"folder outside Latin-1", adding(DATA + "\xE6\xBC\xA2/a"), "name-not-latin1"},
    {"question mark", adding(KSTRL + "what?"), "copy-fails name-not-fat"},
    {"dot at the end", adding(KSTRL + "name."), "copy-fails name-not-fat"},
    {"name of a device", adding(KSTRL + "con.txt"), "name-not-fat"},
    {"longest path that the staging area holds", adding(deepPath(236)), ""},
    {"too long for the staging area", adding(deepPath(237)), "path-too-long copy-fails"},
    {"larger than FAT32 holds", resizing("recordings.bin", uintmax_t{1} << 32), "file-too-large"},

    // The release notes.
    {"no notes", removing(NOTES), "notes-missing"},
    {"notes in another case", renaming(NOTES, "VELD/KstrXReleaseNotes.txt"), "file-name-case"},
    {"notes empty", notes(""), "notes-no-version notes-no-final-line-feed"},
    {"no version", notes("Version 3.0\n"), "notes-no-version"},
    {"version of blanks", notes("KSTRL Release   \n"), "notes-no-version"},
    {"version line above an older one", notes(FIRST_LINE + "KSTRL Release 1.0\n"),
     "notes-second-version"},
    {"another version than the application", adding(KSTRL + "version.txt", "9.9\n"),
     "version-differs"},
    {"carriage returns alone", notes("KSTRL Release 3.0\rnews\r"), "notes-carriage-return"},
    {"prefix not in front", notes("xx KSTRL Release 3.0\n"), "notes-prefix-misplaced"},
    {"byte-order mark", notes("\xEF\xBB\xBF" + FIRST_LINE),
     "notes-prefix-misplaced notes-utf8 notes-missing-glyph"},
    {"no final line feed", notes(FIRST_LINE + "lost"), "notes-no-final-line-feed"},
    {"Ctrl-Z", notes(FIRST_LINE + "a\nb\x1A\nc\n"), "notes-cut"},
    {"UTF-16", notes(utf16(FIRST_LINE)), "notes-no-version notes-nul notes-no-final-line-feed"},
    {"Windows-1252", notes(FIRST_LINE + "\x93quoted\x94\n"), "notes-missing-glyph"},
    {"UTF-8", notes(FIRST_LINE + "\xC3\xA4\n"), "notes-utf8 notes-missing-glyph"},
    {"a tab", notes(FIRST_LINE + "\tindented\n"), "notes-missing-glyph"},
    {"line of 524 pixels", notes(FIRST_LINE + std::string(65, 'm') + "\n"), ""},
    {"line too wide", notes(FIRST_LINE + std::string(66, 'm') + "\n"), "notes-line-too-wide"},
    {"too many lines", notes(FIRST_LINE + lines(24)), "notes-too-many-lines"},

    // GUI data of the screen.
    {"no background", removing(BACKGROUND), "background-missing"},
    {"background too small", resizing(BACKGROUND, uintmax_t{1024} * 768), "background-size"},
    {"no font", removing(FACE), "font-missing"},
    {"font of another kind", replacing(FACE, "BMF\3", "BMF\2"), "font-damaged"},
    {"font page too large", replacing(FACE, {"\x10\0\x10\0\x10\0", 6}, {"\x10\0\x10\0\xFF\xFF", 6}),
     "font-damaged"},
    {"font without its last block", cuttingOff(FACE, 5), "font-damaged"},
    {"no font page", removing(PAGE), "font-page-missing"},
    {"font page of another size", resizing(PAGE, 255), "font-page-size"},
    {"no font that is not drawn", removing(DATA + "fonts/SegoeUI_10px.fnt"), "spare-font-missing"},
    {"no numerals", removing(TABLE + "numerals.txt"), "numerals-missing"},
    {"no string table", removing(TABLE + "fr.txt"), "table-missing"},
    {"table without a text",
     replacing(TABLE + "en.txt", utf16("STR_UDPATEFAILED"), utf16("STR_UPDATEFAILED")),
     "text-missing"},
    {"table in UTF-8", adding(TABLE + "jp.txt", "STR_KESTRELUPDATER\tx\r\n"), "table-encoding"},
    {"table of another language", copying(TABLE + "en.txt", TABLE + "fr.txt"), "table-language"},
    {"table of line feeds", replacing(TABLE + "zh.txt", utf16(" in zh\r\n"), utf16(" in zh\n")),
     "table-line-end"},
    {"table's last line not ended", cuttingOff(TABLE + "du.txt", 4), "table-line-end"},
    {"text too wide", replacing(TABLE + "pt.txt", utf16("Text in pt"), utf16(std::string(56, 'w'))),
     "text-too-wide"},
    {"START too near to its marker's edge", wordedAs(" START"), "text-off-marker"},
    {"START right of its marker", wordedAs(std::string(10, ' ') + "START"), "text-off-marker"},
    {"START and a letter in its marker", wordedAs("  START       S"), "text-off-marker"},
    {"START and a letter beside its marker", wordedAs("  START        S"), ""},
    {"no START", wordedAs("  Start"), "text-off-marker"},
    {"text that the face lacks", replacing(TABLE + "sp.txt", utf16("Text"), utf16("T\x01t")),
     "text-missing-glyph"},

    // The manifest.
    {"manifest and nothing wrong", afterManifest([](const fs::path&) {}), ""},
    {"file changed", afterManifest(adding(KSTRL + "antennas.dat", "Antennas")),
     "manifest-mismatch"},
    {"file added", afterManifest(adding(KSTRL + "new.dat")), "manifest-unknown-file"},
    {"file lost", afterManifest(removing(DATA + "screens.dat")), "manifest-missing-file"},
    {"manifest of another kind", adding(MANIFEST_NAME, "nonsense\n"), "manifest-damaged"},
};

Tree filesOf(const Tree& tree) {
    Tree files;
    for (const auto& [path, bytes] : tree)
        if (path.back() != '/')
            files[path] = bytes;
    return files;
}

// Compares the prediction with the engine, with the key plugged into a device.
TEST(FaultyKeys, AreFoundAndBehaveOnTheDeviceAsPredicted) {
    for (const FaultyKey& faulty : FAULTY_KEYS) {
        SCOPED_TRACE(faulty.name);
        const DeviceFolder device;
        const fs::path key = device.root() / "USB HD";
        writeSoundKey(key);
        faulty.spoil(key);
        device.write("FlashDisk/VELD/KSTRL/KSTRL.exe", "old application");
        device.write("FlashDisk/VELD/ORBUI/data/old", "old data");
        const Tree before = device.tree("FlashDisk");

        const CheckReport report = checkKey(key, {});
        std::istringstream codes(faulty.found);
        EXPECT_EQ(codesOf(report.findings),
                  std::set<std::string>(std::istream_iterator<std::string>(codes), {}));
        EXPECT_EQ(report.prediction.accepted, faulty.accepted);

        Logger::instance().setPath("/log.txt");
        Updater updater;
        updater.pollMedia();
        if (updater.isMediaReady())
            updater.startUpdate();
        while (updater.getState() == Updating)
            updater.step();
        EXPECT_EQ(updater.getState(), report.prediction.state);
        EXPECT_EQ(latin1ToUtf8(updater.getUpdateVersion()), report.prediction.version);
        Tree predicted = faulty.accepted ? Tree{} : filesOf(before);
        for (const std::string& path : report.prediction.copied)
            predicted[path] = readHostFile(entryAt(key, path));
        std::filesystem::remove_all(device.root() / "FlashDisk/VELD/KSTRL_old");
        std::filesystem::remove_all(device.root() / "FlashDisk/VELD/ORBUI_old");
        EXPECT_EQ(filesOf(device.tree("FlashDisk")), predicted);
        leaveRow(key, faulty.name);
    }
}

}  // namespace
