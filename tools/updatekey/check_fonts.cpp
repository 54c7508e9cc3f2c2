// The files by which the updater's own screen is drawn. The update replaces them by the key's: what
// the key lacks, the next update's screen lacks.

#include "platform/posix/read_file.h"
#include "render/faces.h"
#include "tools/updatekey/check.h"
#include "tools/updatekey/face.h"
#include "ui/screen_layout.h"

namespace {

const std::string DATA = "VELD/ORBUI/data/";

// Whether five blocks fill the file to its end. The device's reader forgives a file that was cut;
// whoever ships it should not.
bool isWhole(const std::filesystem::path& path) {
    const std::string bytes = host::readFile(path);
    constexpr std::size_t blockHeader = 5;
    std::size_t position = 4;
    for (int block = 0; block < 5; ++block) {
        if (bytes.size() < position + blockHeader)
            return false;
        uint32_t size = 0;
        for (std::size_t i = blockHeader; i-- > 1;)
            size = (size << 8) | static_cast<unsigned char>(bytes[position + i]);
        position += blockHeader + std::size_t{size};
    }
    return position == bytes.size();
}

std::string glyphFault(const FontData& face) {
    if (face.glyphs.empty())
        return "no font of the kind that the device reads, or one without glyphs";
    if (asksForTooMuch(face))
        return "asks for more memory than the device has for a face";
    if (face.atlasSize == 0 || face.pageNames.empty())
        return "names no page";
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
    const KeyEntry* const entry = key.find(path);
    if (entry == nullptr)
        addError(findings, std::string(what) + "-missing", path,
                 "is needed by the updater's own screen");
    else if (entry->size != size)
        addError(
            findings, std::string(what) + "-size", path,
            "has " + std::to_string(entry->size) + " bytes and must have " + std::to_string(size));
}

void checkFace(const KeyUnderCheck& key, const std::string& face, Severity ifMissing,
               Findings& findings) {
    const std::string path = DATA + "fonts/" + face + ".fnt";
    if (key.find(path) == nullptr) {
        findings.push_back({ifMissing, "font-missing", path,
                            "is loaded by the updater's own screen, and the update takes the "
                            "installed one away"});
        return;
    }
    const FontData font = loadKeyFace(face);
    const std::string fault = glyphFault(font);
    if (!fault.empty())
        return addError(findings, "font-damaged", path, fault);
    if (!isWhole(key.folder / path))
        return addError(findings, "font-damaged", path, "is cut off or has bytes left over");
    for (const std::string& page : font.pageNames) {
        const std::size_t stem = page.size() > 4 ? page.size() - 4 : 0;
        checkRaw(key, DATA + "fonts/" + page.substr(0, stem) + ".raw",
                 uint64_t{font.atlasSize} * font.atlasSize, "font-page", findings);
    }
}

}  // namespace

void checkFonts(const KeyUnderCheck& key, CheckReport& report) {
    constexpr uint64_t backgroundSide = 1024;
    checkRaw(key, DATA + "KSTRL-menubg4.raw", backgroundSide * backgroundSide, "background",
             report.findings);
    for (const Script script : key.scripts()) {
        const std::set<std::string> drawn = {faceName(script, layout::TEXT_FONT_SIZE),
                                             faceName(script, layout::NOTES_FONT_SIZE)};
        for (const char* const face : facesOf(script).slots) {
            if (face == nullptr)
                continue;
            // The screen loads the others too, and never draws with them.
            const Severity ifMissing = drawn.count(face) != 0 ? Severity::error : Severity::warning;
            checkFace(key, face, ifMissing, report.findings);
        }
    }
}
