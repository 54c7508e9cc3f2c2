#include "bench/bench_device.h"

#include <unistd.h>

#include <cstdlib>
#include <fstream>

#include "platform/posix/files/device.h"
#include "render/faces.h"
#include "tests/helpers/font_bytes.h"
#include "ui/screen_layout.h"

namespace fs = std::filesystem;

namespace {

constexpr std::size_t FILES_PER_SUBFOLDER = 500;
constexpr int FIRST_GLYPH = 0x20;
constexpr int LAST_GLYPH = 0xFF;
constexpr int GLYPHS_PER_ROW = 16;
constexpr unsigned PAGE_SIDE = 512;

// Returns a Latin face with one square page and kerning for every pair of letters.
std::string fontFile(int pixels) {
    std::vector<Glyph> glyphs;
    for (int code = FIRST_GLYPH; code <= LAST_GLYPH; ++code) {
        const int index = code - FIRST_GLYPH;
        const int cell = pixels + pixels / 2;
        Glyph glyph{};
        glyph.id = static_cast<uint32_t>(code);
        glyph.x = static_cast<uint16_t>(index % GLYPHS_PER_ROW * cell);
        glyph.y = static_cast<uint16_t>(index / GLYPHS_PER_ROW * cell);
        glyph.width = static_cast<uint16_t>(pixels / 2);
        glyph.height = static_cast<uint16_t>(pixels);
        glyph.yoffset = 2;
        glyph.xadvance = static_cast<int16_t>(pixels / 2 + 1);
        glyphs.push_back(glyph);
    }
    std::string kerning;
    for (uint32_t first = 'A'; first <= 'Z'; ++first)
        for (uint32_t second = 'a'; second <= 'z'; ++second)
            kerning += kerningRecord(first, second, -1);
    return fontBytes(static_cast<unsigned>(pixels) + 4, PAGE_SIDE, glyphs, kerning);
}

std::string stringTable() {
    std::string texts;
    for (const layout::Text& text : layout::TEXTS)
        texts += text.key + std::string("  A text of the screen\r\n");
    return texts;
}

std::string subfolder(std::size_t index) {
    return "d" + std::to_string(index / FILES_PER_SUBFOLDER) + "/";
}

}  // namespace

BenchDevice::BenchDevice() {
    std::string pattern = (fs::temp_directory_path() / "bench-XXXXXX").string();
    root_ = ::mkdtemp(pattern.data());
    setDeviceRoot(root_.string());
    ::setenv("UPDATER_DEVICE", root_.c_str(), 1);
}

BenchDevice::~BenchDevice() {
    std::error_code error;
    fs::remove_all(root_, error);
}

void BenchDevice::write(const std::string& path, const std::string& bytes) const {
    fs::create_directories((root_ / path).parent_path());
    std::ofstream(root_ / path, std::ios::binary) << bytes;
}

void BenchDevice::makeKey(std::size_t files, std::size_t size, std::size_t lines) const {
    const std::string bytes(size, 'x');
    const std::string key = "USB HD/VELD/";
    const std::size_t half = files / 2;
    for (std::size_t i = 0; i < files; ++i) {
        // Files are created in the order of their names, so that the disk stores them in this
        // order.
        const std::string number = std::to_string(i);
        const std::string name = "file" + std::string(6 - number.size(), '0') + number + ".dat";
        write(key + (i < half ? "KSTRL/" : "ORBUI/data/" + subfolder(i - half)) + name, bytes);
    }
    std::string notes = std::string(keylayout::VERSION_PREFIX) + "2.14.3\n";
    for (std::size_t i = 1; i < lines; ++i)
        notes += "- Depth slice " + std::to_string(i) + " is drawn as measured\n";
    write(key + keylayout::RELEASE_NOTES, lines > 0 ? notes : "");
}

void BenchDevice::makeKeyOfOneFile(std::size_t size) const {
    write("USB HD/VELD/KSTRL/file.dat", std::string(size, 'x'));
    write("USB HD/VELD/ORBUI/data/small.dat", "x");
}

void BenchDevice::makeInstallation() const {
    write("FlashDisk/VELD/KSTRL/KSTRL.exe", "#!/bin/sh\n");
    fs::permissions(root_ / "FlashDisk/VELD/KSTRL/KSTRL.exe", fs::perms::owner_all);
    write("registry.reg",
          "Windows Registry Editor Version 5.00\n\n"
          "[HKEY_LOCAL_MACHINE\\SOFTWARE\\VELD\\KESTREL\\SYSTEM_CONFIG]\n"
          "\"LANGUAGE\"=dword:00000000\n");
    makeGuiData("FlashDisk/VELD/ORBUI/data/");
}

void BenchDevice::makeGuiData(const std::string& folder) const {
    for (const int pixels : {10, 13, 18, 24})
        write(folder + "fonts/" + faceName(Script::Latin, pixels) + ".fnt", fontFile(pixels));
    write(folder + "fonts/page.raw", std::string(PAGE_SIDE * PAGE_SIDE, '\x80'));
    write(folder + "lang/" + stringTableFile("en"),
          utf16Bytes(TEXT("\xFEFF") + widen(stringTable())));
    write(folder + layout::BACKGROUND_FILE,
          std::string(layout::BACKGROUND_SIDE * layout::BACKGROUND_SIDE, '\x40'));
}

void settleDisk() {
    ::sync();
}
