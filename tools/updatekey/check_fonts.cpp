// The files by which the updater's own screen is drawn. The update replaces them by the key's: what
// the key lacks, the next update's screen lacks.

#include "platform/posix/read_file.h"
#include "tools/updatekey/check.h"
#include "tools/updatekey/face.h"

namespace {

const std::string DATA = "VELD/ORBUI/data/";

struct NeededFace {
    const char* name;
    Severity ifMissing;  // a warning for a face that the screen loads and never draws with
    std::set<int32_t> languages;
};

const NeededFace NEEDED_FACES[] = {
    {"SegoeUI_10px", Severity::warning, {0, 1, 2, 3, 6}},
    {"SegoeUI_13px", Severity::error, {0, 1, 2, 3, 6}},
    {"SegoeUI_18px", Severity::warning, {0, 1, 2, 3, 6}},
    {"SegoeUI_24px", Severity::error, {0, 1, 2, 3, 6}},
    {"MeiryoUI_24px", Severity::error, {4}},
    {"MeiryoUI_36px", Severity::error, {4}},
    {"FangSong_24px", Severity::error, {5}},
    {"FangSong_36px", Severity::error, {5}},
};

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

void checkFace(const KeyUnderCheck& key, const NeededFace& needed, Findings& findings) {
    const std::string path = DATA + "fonts/" + needed.name + ".fnt";
    if (key.find(path) == nullptr) {
        findings.push_back({needed.ifMissing, "font-missing", path,
                            "is loaded by the updater's own screen, and the update takes the "
                            "installed one away"});
        return;
    }
    const FontData face = loadKeyFace(needed.name);
    const std::string fault = glyphFault(face);
    if (!fault.empty())
        return addError(findings, "font-damaged", path, fault);
    if (!isWhole(key.folder / path))
        return addError(findings, "font-damaged", path, "is cut off or has bytes left over");
    for (const std::string& page : face.pageNames) {
        const std::size_t stem = page.size() > 4 ? page.size() - 4 : 0;
        checkRaw(key, DATA + "fonts/" + page.substr(0, stem) + ".raw",
                 uint64_t{face.atlasSize} * face.atlasSize, "font-page", findings);
    }
}

}  // namespace

void checkFonts(const KeyUnderCheck& key, CheckReport& report) {
    constexpr uint64_t backgroundSide = 1024;
    checkRaw(key, DATA + "KSTRL-menubg4.raw", backgroundSide * backgroundSide, "background",
             report.findings);
    for (const NeededFace& needed : NEEDED_FACES) {
        bool served = false;
        for (const int32_t language : key.options.languages)
            served |= needed.languages.count(language) != 0;
        if (served)
            checkFace(key, needed, report.findings);
    }
}
