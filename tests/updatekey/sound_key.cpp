#include "tests/updatekey/sound_key.h"

#include <fstream>
#include <iterator>

namespace fs = std::filesystem;

namespace {

std::string number(uint64_t value, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i)
        text += static_cast<char>((value >> (8 * i)) & 0xFF);
    return text;
}

std::string block(char type, const std::string& content) {
    return std::string(1, type) + number(static_cast<uint32_t>(content.size()), 4) + content;
}

}  // namespace

std::string fontBytes(const std::string& name, int advance) {
    std::string chars;
    for (uint32_t code = 0x20; code < 0x7F; ++code)
        chars += number(code, 4) + number(0, 4) + number(8, 2) + number(8, 2) + number(0, 4) +
                 number(static_cast<uint32_t>(advance), 2) + number(0, 2);
    const std::string common =
        number(16, 2) + number(12, 2) + number(16, 2) + number(16, 2) + number(1, 2) + number(0, 5);
    return std::string("BMF\3") + block(1, "") + block(2, common) +
           block(3, name + "_0.png" + std::string(1, '\0')) + block(4, chars) + block(5, "");
}

std::string utf16(const std::string& ascii) {
    std::string text;
    for (const char c : ascii)
        text += {c, '\0'};
    return text;
}

std::string tableBytes(const std::string& language) {
    std::string text = "# " + language + "\r\n";
    for (const char* const key :
         {"STR_KESTRELUPDATER", "STR_PLEASEINSERTUPDATEKEY", "STR_PRESSSTOPTOCANCEL",
          "STR_PRESSSTARTTOUPDATE", "STR_PERFORMINGUPDATE", "STR_UDPATECOMPLETE",
          "STR_UDPATEFAILED", "STR_VERSIONUNCHANGED", "STR_PRESSANYKEYTORESTART",
          "STR_KESTRELAPPNOTFOUND"})
        text += std::string(key) + "\t" + "Text in " + language + "\r\n";
    return utf16(text);
}

void writeFile(const fs::path& path, const std::string& bytes) {
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << bytes;
}

std::string readFile(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void writeSoundKey(const fs::path& folder) {
    const fs::path maker = folder / "VELD";
    writeFile(maker / "KSTRL/KSTRL.exe", "application");
    writeFile(maker / "KSTRL/antennas.dat", "antennas");
    writeFile(maker / "kstrXReleaseNotes.txt", "KSTRL Release 2.14.3\n\nFaster start\n");

    const fs::path data = maker / "ORBUI/data";
    writeFile(data / "lang/StringTable_numerals.txt", utf16("# of all languages\r\n"));
    writeFile(data / "screens.dat", "screens");
    writeFile(data / "KSTRL-menubg4.raw", "");
    fs::resize_file(data / "KSTRL-menubg4.raw", 1024 * 1024);
    for (const std::string face :
         {"SegoeUI_10px", "SegoeUI_13px", "SegoeUI_18px", "SegoeUI_24px", "MeiryoUI_24px",
          "MeiryoUI_36px", "FangSong_24px", "FangSong_36px"}) {
        writeFile(data / "fonts" / (face + ".fnt"), fontBytes(face, 8));
        writeFile(data / "fonts" / (face + "_0.raw"), std::string(16 * 16, '\x7F'));
    }
    for (const std::string language : {"en", "fr", "pt", "sp", "jp", "zh", "du"})
        writeFile(data / "lang" / ("StringTable_" + language + ".txt"), tableBytes(language));
}
