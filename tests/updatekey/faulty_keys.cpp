#include "tests/updatekey/faulty_keys.h"

#include "tests/updatekey/sound_key.h"
#include "tools/updatekey/manifest.h"

namespace fs = std::filesystem;

namespace {

using Spoil = std::function<void(const fs::path&)>;

const std::string MAKER = "VELD/";
const std::string KSTRL = "VELD/KSTRL/";
const std::string DATA = "VELD/ORBUI/data/";
const std::string FONTS = DATA + "fonts/";
const std::string LANG = DATA + "lang/";
const std::string NOTES = "VELD/kstrXReleaseNotes.txt";

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
    return [=](const fs::path& key) { fs::resize_file(key / path, size); };
}

Spoil cuttingOff(const std::string& path, uintmax_t bytes) {
    return [=](const fs::path& key) {
        fs::resize_file(key / path, fs::file_size(key / path) - bytes);
    };
}

Spoil replacing(const std::string& path, const std::string& what, const std::string& by) {
    return [=](const fs::path& key) {
        std::string bytes = readFile(key / path);
        bytes.replace(bytes.find(what), what.size(), by);
        writeFile(key / path, bytes);
    };
}

Spoil notes(const std::string& bytes) {
    return adding(NOTES, bytes);
}

// Makes the manifest first, so that it tells of the state before.
Spoil afterManifest(const Spoil& spoil) {
    return [=](const fs::path& key) {
        writeFile(key / MANIFEST_NAME, toText(computeManifest(key)));
        spoil(key);
    };
}

void addLayoutFaults(std::vector<FaultyKey>& keys) {
    const auto notSeen = [&](const char* name, const Spoil& spoil, std::set<std::string> codes) {
        keys.push_back({name, spoil, std::move(codes), false});
    };
    notSeen("no maker folder", removing("VELD"), {"no-maker-folder"});
    notSeen("maker folder in lower case", renaming("VELD", "veld"),
            {"no-maker-folder", "name-case"});
    notSeen("no application folder", removing(KSTRL), {"no-application-folder"});
    notSeen("application folder in another case", renaming("VELD/KSTRL", "VELD/Kstrl"),
            {"no-application-folder", "name-case"});
    notSeen("application folder empty", emptying("VELD/KSTRL"),
            {"application-empty", "no-application"});
    notSeen("application in a subfolder", renaming("VELD/KSTRL", "VELD/x"), {});
    keys.back().spoil = [](const fs::path& key) {
        fs::rename(key / KSTRL, key / "x");
        fs::create_directory(key / KSTRL);
        fs::rename(key / "x", key / KSTRL / "KSTRL");
    };
    keys.back().findings = {"application-empty", "no-application"};
    notSeen("no GUI folder", removing("VELD/ORBUI"), {"no-gui-folder"});
    notSeen("GUI folder without data", removing(DATA), {"no-gui-data"});
    notSeen("data in another case", renaming("VELD/ORBUI/data", "VELD/ORBUI/Data"),
            {"no-gui-data", "name-case"});
    notSeen("data empty", emptying("VELD/ORBUI/data"), {"gui-data-empty"});
    keys.push_back({"no application", removing(KSTRL + "KSTRL.exe"), {"no-application"}});
    keys.push_back({"application in another case",
                    renaming(KSTRL + "KSTRL.exe", KSTRL + "kstrl.exe"),
                    {"no-application", "name-case"}});
    keys.push_back(
        {"application empty", resizing(KSTRL + "KSTRL.exe", 0), {"application-damaged"}});
}

void addDroppedFiles(std::vector<FaultyKey>& keys) {
    keys.push_back(
        {"subfolder of the application", adding(KSTRL + "plugins/a.dll"), {"not-copied"}});
    keys.push_back(
        {"second-level subfolder of the data", adding(LANG + "extra/x"), {"not-copied"}});
    keys.push_back({"file beside data", adding("VELD/ORBUI/readme.txt"), {"not-copied"}});
    keys.push_back({"folder beside KSTRL", adding(MAKER + "TOOLS/a"), {"not-copied"}});
    keys.push_back({"litter of one desktop", adding(KSTRL + "._KSTRL.exe"), {"litter"}});
    keys.push_back({"litter of another", adding(FONTS + "Thumbs.db"), {"litter"}});
    keys.push_back({"litter folder in the data", adding(DATA + ".Trashes/x"), {"litter"}});
    keys.push_back({"litter where nothing is copied", adding(".DS_Store"), {}});
    keys.push_back(
        {"link",
         [](const fs::path& key) { fs::create_symlink("antennas.dat", key / KSTRL / "link"); },
         {"not-a-file"}});
}

void addBadNames(std::vector<FaultyKey>& keys) {
    const auto deepName = [](std::size_t relativeLength) {
        return DATA + "n/" + std::string(relativeLength - std::string("ORBUI/data/n/").size(), 'a');
    };
    keys.push_back({"case clash", adding(KSTRL + "Antennas.dat"), {"case-clash"}});
    keys.push_back({"Latin-1 is fine", adding(KSTRL + "k\xC3\xA4the.dat"), {}});
    keys.push_back({"outside Latin-1", adding(KSTRL + "\xC5\x81ukasz.dat"), {"name-not-latin1"}});
    keys.push_back({"outside Latin-1, another's name for the device",
                    adding(KSTRL + "antennas.da\xC5\xB4"),
                    {"name-not-latin1"}});
    keys.push_back(
        {"folder outside Latin-1", adding(DATA + "\xE6\xBC\xA2/a"), {"name-not-latin1"}});
    keys.push_back({"question mark", adding(KSTRL + "what?"), {"name-not-fat"}});
    keys.push_back({"dot at the end", adding(KSTRL + "name."), {"name-not-fat"}});
    keys.push_back({"longest path that the staging area holds", adding(deepName(236)), {}});
    keys.push_back(
        {"too long for the staging area", adding(deepName(237)), {"path-too-long", "copy-fails"}});
    keys.push_back({"larger than FAT32 holds",
                    [](const fs::path& key) {
                        writeFile(key / "recordings.bin", "");
                        fs::resize_file(key / "recordings.bin", uintmax_t{1} << 32);
                    },
                    {"file-too-large"}});
}

void addNotesFaults(std::vector<FaultyKey>& keys) {
    const std::string first = "KSTRL Release 3.0\n";
    std::string many = first;
    for (int line = 0; line < 24; ++line)
        many += "line\n";
    keys.push_back({"no notes", removing(NOTES), {"notes-missing"}});
    keys.push_back({"notes in another case",
                    renaming(NOTES, "VELD/KstrXReleaseNotes.txt"),
                    {"notes-missing", "name-case", "not-copied"}});
    keys.push_back({"notes empty", notes(""), {"notes-no-version", "notes-no-final-line-feed"}});
    keys.push_back({"no version", notes("Version 3.0\n"), {"notes-no-version"}});
    keys.push_back({"prefix alone", notes("KSTRL Release \n"), {"notes-no-version"}});
    keys.push_back(
        {"prefix not in front", notes("xx KSTRL Release 3.0\n"), {"notes-prefix-misplaced"}});
    keys.push_back({"byte-order mark",
                    notes("\xEF\xBB\xBF" + first),
                    {"notes-prefix-misplaced", "notes-utf8", "notes-missing-glyph"}});
    keys.push_back({"no final line feed", notes(first + "lost"), {"notes-no-final-line-feed"}});
    keys.push_back({"CR LF is fine", notes("KSTRL Release 3.0\r\nshown\r\n"), {}});
    keys.push_back({"Ctrl-Z", notes(first + "a\nb\x1A\nc\n"), {"notes-cut"}});
    keys.push_back({"UTF-16",
                    notes(utf16(first)),
                    {"notes-no-version", "notes-nul", "notes-no-final-line-feed"}});
    keys.push_back({"UTF-8", notes(first + "\xC3\xA4\n"), {"notes-utf8", "notes-missing-glyph"}});
    keys.push_back({"a tab", notes(first + "\tindented\n"), {"notes-missing-glyph"}});
    keys.push_back({"line of 524 pixels", notes(first + std::string(65, 'm') + "\n"), {}});
    keys.push_back(
        {"line too wide", notes(first + std::string(66, 'm') + "\n"), {"notes-line-too-wide"}});
    keys.push_back({"too many lines", notes(many), {"notes-too-many-lines"}});
}

void addGuiDataFaults(std::vector<FaultyKey>& keys) {
    const std::string face = FONTS + "SegoeUI_24px";
    keys.push_back({"no background", removing(DATA + "KSTRL-menubg4.raw"), {"background-missing"}});
    keys.push_back({"background too small",
                    resizing(DATA + "KSTRL-menubg4.raw", 1024 * 768),
                    {"background-size"}});
    keys.push_back({"no font", removing(face + ".fnt"), {"font-missing"}});
    keys.push_back(
        {"font of another kind", replacing(face + ".fnt", "BMF\3", "BMF\2"), {"font-damaged"}});
    keys.push_back({"font cut off", cuttingOff(face + ".fnt", 30), {"font-damaged"}});
    keys.push_back({"font without its last block", cuttingOff(face + ".fnt", 5), {"font-damaged"}});
    keys.push_back({"no font page", removing(face + "_0.raw"), {"font-page-missing"}});
    keys.push_back(
        {"font page of another size", resizing(face + "_0.raw", 255), {"font-page-size"}});
    keys.push_back({"no string table", removing(LANG + "StringTable_fr.txt"), {"table-missing"}});
    keys.push_back({"table without a text",
                    replacing(LANG + "StringTable_en.txt", utf16("STR_UDPATEFAILED"),
                              utf16("STR_UPDATEFAILED")),
                    {"text-missing"}});
    keys.push_back({"table in UTF-8",
                    adding(LANG + "StringTable_jp.txt", "STR_KESTRELUPDATER\tx\r\n"),
                    {"text-missing", "table-line-end"}});
    keys.push_back({"table's last line not ended",
                    cuttingOff(LANG + "StringTable_du.txt", 4),
                    {"table-line-end"}});
    keys.push_back(
        {"text too wide",
         replacing(LANG + "StringTable_pt.txt", utf16("Text in pt"), utf16(std::string(121, 'w'))),
         {"text-too-wide"}});
    keys.push_back({"text that the face lacks",
                    replacing(LANG + "StringTable_sp.txt", utf16("Text"), utf16("T\x01t")),
                    {"text-missing-glyph"}});
}

void addManifestFaults(std::vector<FaultyKey>& keys) {
    keys.push_back({"manifest and nothing wrong", afterManifest([](const fs::path&) {}), {}});
    keys.push_back({"file changed",
                    afterManifest(adding(KSTRL + "antennas.dat", "Antennas")),
                    {"manifest-mismatch"}});
    keys.push_back(
        {"file added", afterManifest(adding(KSTRL + "new.dat")), {"manifest-unknown-file"}});
    keys.push_back(
        {"file lost", afterManifest(removing(DATA + "screens.dat")), {"manifest-missing-file"}});
    keys.push_back(
        {"manifest of another kind", adding(MANIFEST_NAME, "nonsense\n"), {"manifest-damaged"}});
}

}  // namespace

std::vector<FaultyKey> faultyKeys() {
    std::vector<FaultyKey> keys;
    keys.push_back({"sound", [](const fs::path&) {}, {}});
    addLayoutFaults(keys);
    addDroppedFiles(keys);
    addBadNames(keys);
    addNotesFaults(keys);
    addGuiDataFaults(keys);
    addManifestFaults(keys);
    return keys;
}
