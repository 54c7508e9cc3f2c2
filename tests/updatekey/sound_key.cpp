#include "tests/updatekey/sound_key.h"

#include <cstdlib>
#include <fstream>

#include "render/faces.h"
#include "support/text.h"
#include "tests/helpers/font_bytes.h"
#include "ui/screen_layout.h"

namespace fs = std::filesystem;

namespace {

// Returns a face with a glyph for each printable ASCII character, 8 pixels wide, whose vertical
// place fits the markers.
std::string faceBytes() {
    std::vector<Glyph> glyphs;
    for (uint32_t code = 0x20; code < 0x7F; ++code)
        glyphs.push_back({code, 0, 0, 8, 8, 0, 20, 8, 0, 0});
    return fontBytes(16, 16, glyphs);
}

// The word inside a marker, padded to the marker's position.
std::string keyWord(const std::string& key) {
    for (const layout::KeyMarker& marker : layout::KEY_MARKERS)
        if (key == marker.textKey)
            return "  " + narrow(marker.word);
    return {};
}

// A string table with the ten texts of the updater's screen.
std::string tableBytes(const std::string& language) {
    std::string text = "# " + language + "\r\n";
    std::set<std::string> keys;
    for (const layout::Text& shown : layout::TEXTS)
        keys.insert(shown.key);
    for (const std::string& key : keys)
        text += key + "\tText in " + language + keyWord(key) + "\r\n";
    return utf16Bytes(widen(text));
}

}  // namespace

std::string programBytes(uint16_t machine, char sections) {
    std::string bytes = "MZ" + std::string(62, '\0') + "PE" + std::string(2, '\0');
    bytes[0x3C] = 0x40;
    bytes += static_cast<char>(machine & 0xFF);
    bytes += static_cast<char>(machine >> 8);
    bytes += sections;
    return bytes + std::string(17, '\0') + std::string(40, '\x7F');
}

void writeFile(const fs::path& path, const std::string& bytes) {
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << bytes;
}

void writeSoundKey(const fs::path& folder) {
    const fs::path maker = folder / "VELD";
    writeFile(maker / "KSTRL/KSTRL.exe", programBytes(ARM));
    writeFile(maker / "KSTRL/antennas.dat", "antennas");
    writeFile(maker / "kstrXReleaseNotes.txt", "KSTRL Release 2.14.3\n\nFaster start\n");

    const fs::path data = maker / "ORBUI/data";
    writeFile(data / "lang/StringTable_numerals.txt", utf16Bytes(TEXT("# of all languages\r\n")));
    writeFile(data / "screens.dat", "screens");
    writeFile(data / "KSTRL-menubg4.raw", "");
    fs::resize_file(data / "KSTRL-menubg4.raw", 1024 * 1024);
    for (const Faces& faces : FACES)
        for (const char* const face : faces.slots)
            if (face != nullptr)
                writeFile(data / "fonts" / (std::string(face) + ".fnt"), faceBytes());
    writeFile(data / "fonts/page.raw", std::string(16 * 16, '\x7F'));
    for (const Language& language : LANGUAGES)
        writeFile(data / "lang" / stringTableFile(language.suffix), tableBytes(language.suffix));
}

void leaveRow(const fs::path& key, const std::string& name) {
    static int number = 100;
    const char* const rows = std::getenv("UPDATEKEY_ROWS");
    if (rows == nullptr)
        return;
    fs::create_directories(fs::path(rows) / "key");
    fs::rename(key, fs::path(rows) / "key" / (std::to_string(number++) + " " + name));
}

std::set<std::string> codesOf(const Findings& findings) {
    std::set<std::string> codes;
    for (const Finding& finding : findings)
        codes.insert(finding.code);
    return codes;
}
