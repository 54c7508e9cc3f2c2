#include "tools/guidata/font_baker.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "tools/guidata/atlas.h"
#include "tools/guidata/bmfont_writer.h"
#include "tools/guidata/text_encoding.h"
#include "tools/guidata/typeface.h"
#include "tools/host/host_file.h"

namespace {

struct RenderedGlyph {
    char16_t character;
    GlyphImage image;
};

// When a glyph has ink to the left of the pen (such as "j"), all cells of the face are moved to the
// left by the same amount, so that the distances between glyphs stay correct.
int commonInset(Typeface& typeface, const std::set<char16_t>& characters) {
    int inset = 0;
    for (const char16_t character : characters)
        inset = std::max(inset, typeface.leftOverhang(character));
    return inset;
}

void requireThatItFits(const BakeRequest& request, const RenderedGlyph& glyph) {
    const int top = request.base - glyph.image.top;
    const int bottom = top + glyph.image.height;
    if (glyph.image.height != 0 && (top < 0 || bottom > request.lineHeight))
        throw std::runtime_error(request.faceName + ": " + characterName(glyph.character) +
                                 " extends from row " + std::to_string(top) + " to row " +
                                 std::to_string(bottom) + ", but its line has only the rows 0 to " +
                                 std::to_string(request.lineHeight));
}

std::vector<RenderedGlyph> renderGlyphs(const BakeRequest& request, Typeface& typeface,
                                        const std::set<char16_t>& characters) {
    std::vector<RenderedGlyph> glyphs;
    const int inset = commonInset(typeface, characters);
    for (const char16_t character : characters) {
        glyphs.push_back({character, typeface.render(character, inset)});
        requireThatItFits(request, glyphs.back());
    }
    return glyphs;
}

// The device moves the second glyph of a pair but not the pen, so kerning narrows the gap before
// that glyph and widens the gap after it by the same amount. Half of the font's kerning balances
// the two.
KerningTable fontKerning(const Typeface& typeface, const std::set<char16_t>& characters) {
    constexpr double SHARE = 0.5;
    KerningTable pairs;
    for (const char16_t first : characters) {
        for (const char16_t second : characters) {
            const long amount = std::lround(typeface.kerning(first, second) * SHARE);
            if (amount != 0)
                pairs[{first, second}] = static_cast<int16_t>(amount);
        }
    }
    return pairs;
}

std::vector<CellSize> cellSizes(const std::vector<RenderedGlyph>& glyphs) {
    std::vector<CellSize> sizes;
    sizes.reserve(glyphs.size());
    for (const RenderedGlyph& glyph : glyphs)
        sizes.push_back({glyph.image.width, glyph.image.height});
    return sizes;
}

// The format requires page names of equal length.
std::vector<std::string> pageNames(const std::string& faceName, int count) {
    const std::size_t digits = std::to_string(count - 1).size();
    std::vector<std::string> names;
    for (int page = 0; page < count; ++page) {
        const std::string number = std::to_string(page);
        std::string name = faceName + "_";
        name.append(digits - number.size(), '0').append(number).append(".raw");
        names.push_back(name);
    }
    return names;
}

Glyph placedGlyph(const RenderedGlyph& glyph, const CellPlace& place, int base) {
    constexpr uint8_t ALL_CHANNELS = 15;
    Glyph placed{};
    placed.id = glyph.character;
    placed.x = static_cast<uint16_t>(place.x);
    placed.y = static_cast<uint16_t>(place.y);
    placed.width = static_cast<uint16_t>(glyph.image.width);
    placed.height = static_cast<uint16_t>(glyph.image.height);
    placed.yoffset = static_cast<int16_t>(glyph.image.height == 0 ? 0 : base - glyph.image.top);
    placed.xadvance = static_cast<int16_t>(glyph.image.advance);
    placed.page = static_cast<uint8_t>(place.page);
    placed.channel = ALL_CHANNELS;
    return placed;
}

void drawGlyph(const GlyphImage& image, const CellPlace& place, int side,
               std::vector<uint8_t>& page) {
    const auto width = static_cast<std::size_t>(image.width);
    for (int row = 0; row < image.height; ++row) {
        const auto to = (place.y + row) * std::ptrdiff_t{side} + place.x;
        std::copy_n(image.coverage.begin() + row * std::ptrdiff_t{image.width}, width,
                    page.begin() + to);
    }
}

}  // namespace

std::set<char16_t> latin1() {
    std::set<char16_t> characters;
    for (char16_t character = 0x20; character < 0x7F; ++character)
        characters.insert(character);
    for (char16_t character = 0xA0; character < 0x100; ++character)
        characters.insert(character);
    return characters;
}

BakedFace bakeFace(const BakeRequest& request) {
    Typeface typeface(request.fontPath, request.faceIndex, request.emSize);
    BakedFace face;
    std::set<char16_t> characters;
    for (const char16_t character : request.characters) {
        if (typeface.hasGlyph(character))
            characters.insert(character);
        else
            face.missing.push_back(character);
    }
    const std::vector<RenderedGlyph> glyphs = renderGlyphs(request, typeface, characters);

    const Atlas atlas = packAtlas(cellSizes(glyphs), request.maxPageSide);
    constexpr int MAX_PAGES = 256;
    if (atlas.pages == 0 || atlas.pages > MAX_PAGES)
        throw std::runtime_error(request.faceName + ": the glyphs do not fit on pages of " +
                                 std::to_string(request.maxPageSide) + " pixels");
    const auto side = static_cast<std::size_t>(atlas.side);
    face.pages.assign(static_cast<std::size_t>(atlas.pages), std::vector<uint8_t>(side * side));
    for (std::size_t i = 0; i < glyphs.size(); ++i) {
        const RenderedGlyph& glyph = glyphs[i];
        const CellPlace& place = atlas.places[i];
        face.font.glyphs[glyph.character] = placedGlyph(glyph, place, request.base);
        drawGlyph(glyph.image, place, atlas.side, face.pages[static_cast<std::size_t>(place.page)]);
    }
    face.fontName = typeface.familyName();
    face.emSize = static_cast<int>(std::lround(request.emSize));
    face.font.lineHeight = static_cast<uint32_t>(request.lineHeight);
    face.font.base = static_cast<uint32_t>(request.base);
    face.font.atlasSize = static_cast<uint32_t>(atlas.side);
    face.font.pageNames = pageNames(request.faceName, atlas.pages);
    face.font.kerning = fontKerning(typeface, characters);
    face.extraKerning = scaledKerning(request.extraKerning, request.emSize);
    return face;
}

void writeFace(const BakedFace& face, const std::string& faceName, const std::string& folder) {
    const std::string prefix = folder + "/";
    for (std::size_t page = 0; page < face.pages.size(); ++page) {
        const std::string bytes(face.pages[page].begin(), face.pages[page].end());
        writeHostFile(prefix + face.font.pageNames[page], bytes);
    }
    writeHostFile(prefix + faceName + ".kern", encodeKernFile(face.extraKerning));
    writeHostFile(prefix + faceName + ".fnt", encodeBmFont(face.font, face.fontName, face.emSize));
}
