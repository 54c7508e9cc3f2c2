#include "bench/bench_device.h"

#include <unistd.h>

#include <cstdlib>
#include <fstream>

#include "platform/posix/device.h"
#include "ui/screen_layout.h"

namespace fs = std::filesystem;

namespace {

constexpr std::size_t FILES_PER_SUBFOLDER = 500;
constexpr int FIRST_GLYPH = 0x20;
constexpr int LAST_GLYPH = 0xFF;
constexpr int GLYPHS_PER_ROW = 16;

std::string little(uint32_t value, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i)
        text += static_cast<char>(value >> (8 * i));
    return text;
}

std::string block(int type, const std::string& content) {
    return little(static_cast<uint32_t>(type), 1) +
           little(static_cast<uint32_t>(content.size()), 4) + content;
}

// Returns a Latin face with one square page and kerning for every pair of letters.
std::string fontFile(const std::string& face, uint32_t pixels) {
    const uint32_t cell = pixels + pixels / 2;
    std::string chars;
    for (int code = FIRST_GLYPH; code <= LAST_GLYPH; ++code) {
        const auto index = static_cast<uint32_t>(code - FIRST_GLYPH);
        chars += little(static_cast<uint32_t>(code), 4);
        chars +=
            little(index % GLYPHS_PER_ROW * cell, 2) + little(index / GLYPHS_PER_ROW * cell, 2);
        chars += little(pixels / 2, 2) + little(pixels, 2) + little(0, 2) + little(2, 2);
        chars += little(pixels / 2 + 1, 2) + little(0, 1) + little(15, 1);
    }
    std::string kerning;
    for (uint32_t first = 'A'; first <= 'Z'; ++first)
        for (uint32_t second = 'a'; second <= 'z'; ++second)
            kerning += little(first, 4) + little(second, 4) + little(0xFFFF, 2);
    const std::string common = little(pixels + 4, 2) + little(pixels, 2) + little(512, 2) +
                               little(512, 2) + little(1, 2) + little(0, 5);
    return "BMF\3" + block(1, std::string(20, '\0')) + block(2, common) +
           block(3, face + "_0.png" + std::string(1, '\0')) + block(4, chars) + block(5, kerning);
}

std::string utf16(const std::string& latin) {
    std::string text = "\xFF\xFE";
    for (const char c : latin)
        text += {c, '\0'};
    return text;
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
    std::string notes = "KSTRL Release 2.14.3\n";
    for (std::size_t i = 1; i < lines; ++i)
        notes += releaseNotesLine(i) + "\n";
    write(key + "kstrXReleaseNotes.txt", lines > 0 ? notes : "");
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
    for (const uint32_t pixels : {10U, 13U, 18U, 24U}) {
        const std::string face = "SegoeUI_" + std::to_string(pixels) + "px";
        write(folder + "fonts/" + face + ".fnt", fontFile(face, pixels));
        write(folder + "fonts/" + face + "_0.raw", std::string(512 * 512, '\x80'));
    }
    write(folder + "lang/StringTable_en.txt", utf16(stringTable()));
    write(folder + "KSTRL-menubg4.raw", std::string(1024 * 1024, '\x40'));
}

std::string releaseNotesLine(std::size_t number) {
    return "- Depth slice " + std::to_string(number) + " is drawn as measured";
}

void settleDisk() {
    ::sync();
}
