// Checks the fonts and the background of the updater's screen. The update replaces them with those
// of the key, so what the key lacks will be missing on the screen during the next update.

#include <cstdlib>

#include "platform/posix/files/read_file.h"
#include "render/faces.h"
#include "tools/updatekey/check/check.h"
#include "tools/updatekey/check/face.h"
#include "tools/updatekey/check/key_paths.h"
#include "ui/screen_layout.h"

namespace {

const std::string FONTS = keypaths::GUI_DATA + "/fonts/";

// Whether five blocks fill the file exactly. The device accepts a truncated file; a key must not
// contain one.
bool isWhole(const std::string& bytes) {
    constexpr std::size_t BLOCK_HEADER = 5;
    std::size_t position = 4;
    for (int block = 0; block < 5; ++block) {
        if (bytes.size() < position + BLOCK_HEADER)
            return false;
        uint32_t size = 0;
        for (std::size_t i = BLOCK_HEADER; i-- > 1;)
            size = (size << 8) | static_cast<unsigned char>(bytes[position + i]);
        position += BLOCK_HEADER + std::size_t{size};
    }
    return position == bytes.size();
}

std::string glyphFault(const FontData& face) {
    if (face.glyphs.empty())
        return "is not a font that the device can read, or has no glyphs";
    if (asksForTooMuch(face))
        return "needs more memory than the device allows for a font";
    if (face.atlasSize == 0 || face.pageNames.empty())
        return "has no pages";
    for (const auto& [code, glyph] : face.glyphs) {
        const bool outside = glyph.x + glyph.width > static_cast<int>(face.atlasSize) ||
                             glyph.y + glyph.height > static_cast<int>(face.atlasSize);
        if (glyph.page >= face.pageNames.size() || outside)
            return "has a glyph outside its pages: " + listCharacters({static_cast<WCHAR>(code)});
    }
    return {};
}

void checkRaw(const KeyUnderCheck& key, const std::string& path, uint64_t size, const char* what,
              Findings& findings) {
    const TreeEntry* const entry = key.find(path);
    if (entry == nullptr)
        addError(findings, std::string(what) + "-missing", path,
                 "is missing; the updater's screen needs it");
    else if (entry->size != size)
        addError(
            findings, std::string(what) + "-size", path,
            "has " + std::to_string(entry->size) + " bytes and must have " + std::to_string(size));
}

std::string bytesOf(const KeyUnderCheck& key, const std::string& path) {
    const TreeEntry* const entry = key.find(path);
    return entry != nullptr ? host::readFile((key.folder / entry->path).string()) : std::string();
}

bool isEmptyPicture(const std::string& bytes) {
    return bytes.find_first_not_of('\0') == std::string::npos;
}

// In a picture, neighbouring pixels are similar; random data gives a mean difference of 85.
bool looksLikeNoise(const std::string& bytes) {
    constexpr double MOST = 50;
    double sum = 0;
    for (std::size_t i = 1; i < bytes.size(); ++i)
        sum += std::abs(static_cast<unsigned char>(bytes[i]) -
                        static_cast<unsigned char>(bytes[i - 1]));
    return !bytes.empty() && sum / static_cast<double>(bytes.size()) > MOST;
}

void checkFace(const KeyUnderCheck& key, const std::string& face, Severity ifMissing,
               Findings& findings) {
    const std::string path = FONTS + face + ".fnt";
    if (key.find(path) == nullptr) {
        findings.push_back({ifMissing, "font-missing", path,
                            "is missing; the updater's screen loads it, and the update removes the "
                            "installed one"});
        return;
    }
    const FontData font = loadKeyFace(face);
    const std::string fault = glyphFault(font);
    if (!fault.empty())
        return addError(findings, "font-damaged", path, fault);
    if (!isWhole(bytesOf(key, path)))
        return addError(findings, "font-damaged", path,
                        "is truncated, or has extra bytes at its end");
    for (const std::string& page : font.pageNames) {
        const std::size_t stem = page.size() > 4 ? page.size() - 4 : 0;
        const std::string raw = FONTS + page.substr(0, stem) + ".raw";
        checkRaw(key, raw, uint64_t{font.atlasSize} * font.atlasSize, "font-page", findings);
        if (key.find(raw) != nullptr && isEmptyPicture(bytesOf(key, raw)))
            addError(findings, "font-page-empty", raw,
                     "is empty, so that its characters are invisible; make the font again");
    }
}

// The faces of a script are listed by size, so a face that is smaller than the one before it has
// probably got the wrong name.
void checkSizes(const KeyUnderCheck& key, Script script, Findings& findings) {
    uint32_t before = 0;
    for (const char* const face : facesOf(script).slots) {
        const std::string path = face != nullptr ? FONTS + face + ".fnt" : "";
        if (path.empty() || key.find(path) == nullptr)
            continue;
        const uint32_t height = loadKeyFace(face).lineHeight;
        if (height != 0 && height < before)
            addWarning(findings, "font-size", path,
                       "has lines of " + std::to_string(height) +
                           " pixels, fewer than the font of the next smaller size; check its name");
        before = height;
    }
}

}  // namespace

void checkFonts(const KeyUnderCheck& key, CheckReport& report) {
    constexpr uint64_t SIDE = layout::BACKGROUND_SIDE;
    const std::string background = keypaths::GUI_DATA + "/" + layout::BACKGROUND_FILE;
    checkRaw(key, background, SIDE * SIDE, "background", report.findings);
    if (looksLikeNoise(bytesOf(key, background)))
        addWarning(report.findings, "background-noise", background,
                   "looks like noise instead of a picture; make it with rawimage");
    for (const Script script : key.scripts()) {
        checkSizes(key, script, report.findings);
        const std::set<std::string> drawn = {faceName(script, layout::TEXT_FONT_SIZE),
                                             faceName(script, layout::NOTES_FONT_SIZE)};
        for (const char* const face : facesOf(script).slots) {
            if (face == nullptr)
                continue;
            // The screen loads the other faces too, but never draws with them.
            const Severity ifMissing = drawn.count(face) != 0 ? Severity::Error : Severity::Warning;
            checkFace(key, face, ifMissing, report.findings);
        }
    }
}
