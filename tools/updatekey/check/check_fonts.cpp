// Checks the fonts and the background of the updater's screen. The update replaces them with those
// of the key, so what the key lacks will be missing on the screen during the next update.

#include "render/faces.h"
#include "tools/updatekey/check/checks.h"
#include "ui/screen_layout.h"

namespace {

const std::string FONTS = keypaths::GUI_DATA + "/fonts/";

std::string glyphFault(const FontData& face) {
    if (face.glyphs.empty())
        return "is not a font that the device can read, or has no glyphs";
    if (needsTooMuchMemory(face))
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

void checkRaw(KeyUnderCheck& key, const std::string& path, uint64_t side, const std::string& what) {
    const TreeEntry* const entry = key.find(path);
    if (entry == nullptr)
        key.add(what + "-missing", path, "is missing; the updater's screen needs it");
    else if (entry->size != side * side)
        key.add(what + "-size", path,
                "has " + std::to_string(entry->size) + " bytes and must have " +
                    std::to_string(side * side));
}

void checkFace(KeyUnderCheck& key, const std::string& face, bool drawn) {
    const std::string path = FONTS + face + ".fnt";
    if (key.find(path) == nullptr)
        return key.add(drawn ? "font-missing" : "spare-font-missing", path,
                       "is missing; the updater's screen loads it");
    const FontData font = loadKeyFace(face);
    const std::string fault = glyphFault(font);
    if (!fault.empty())
        return key.add("font-damaged", path, fault);
    const std::string bytes = key.read(path);
    FontData parsed;
    if (!parseFont(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size(), parsed))
        return key.add("font-damaged", path, "is truncated, or has extra bytes at its end");
    for (const std::string& page : font.pageNames) {
        const std::size_t stem = page.size() > 4 ? page.size() - 4 : 0;
        checkRaw(key, FONTS + page.substr(0, stem) + ".raw", font.atlasSize, "font-page");
    }
}

// The faces of a script are listed by size, so a face that is smaller than the one before it has
// probably got the wrong name.
void checkSizes(KeyUnderCheck& key, Script script) {
    uint32_t before = 0;
    for (const char* const face : facesOf(script).slots) {
        const std::string path = face != nullptr ? FONTS + face + ".fnt" : "";
        if (path.empty() || key.find(path) == nullptr)
            continue;
        const uint32_t height = loadKeyFace(face).lineHeight;
        if (height != 0 && height < before)
            key.add("font-size", path,
                    "has lines of " + std::to_string(height) +
                        " pixels, fewer than the font of the next smaller size; check its name");
        before = height;
    }
}

}  // namespace

void checkFonts(KeyUnderCheck& key) {
    checkRaw(key, keypaths::GUI_DATA + "/" + layout::BACKGROUND_FILE, layout::BACKGROUND_SIDE,
             "background");
    for (const Script script : key.scripts()) {
        checkSizes(key, script);
        const std::set<std::string> drawn = {faceName(script, layout::TEXT_FONT_SIZE),
                                             faceName(script, layout::NOTES_FONT_SIZE)};
        // The screen loads the other faces too, but never draws with them.
        for (const char* const face : facesOf(script).slots)
            if (face != nullptr)
                checkFace(key, face, drawn.count(face) != 0);
    }
}
