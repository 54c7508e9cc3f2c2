// The files that describe a bitmap font: ".fnt" with the glyphs' metrics and the names of the
// pages that hold their pictures, and ".kern" with further kerning pairs.
//
// Of a damaged file what was sound before the fault is kept, and the rest is left out. A file that
// asks for too much is read no further.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/win32.h"

// One glyph as the ".fnt" file stores it; lengths in pixels.
struct Glyph {
    uint32_t id;  // character code
    uint16_t x;   // left and top edge in the page
    uint16_t y;
    uint16_t width;
    uint16_t height;
    int16_t xoffset;  // not used in drawing
    int16_t yoffset;  // from the text position down to the glyph's top
    int16_t xadvance;
    uint8_t page;
    uint8_t channel;  // not used
};

using GlyphTable = std::map<uint16_t, Glyph>;
using KerningTable = std::map<std::pair<uint32_t, uint32_t>, int16_t>;  // by first and second

struct FontData {
    uint32_t atlasSize = 0;   // side of the square pages, pixels
    uint32_t lineHeight = 0;  // pixels
    uint32_t base = 0;        // from the top of the line to the baseline, pixels
    GlyphTable glyphs;
    KerningTable kerning;
    std::vector<std::string> pageNames;
};

// Adds what the bytes of a ".fnt" file hold to `font`; nothing when they do not begin as one.
void parseFont(const unsigned char* bytes, std::size_t size, FontData& font);

// Sets the pair that a line of a ".kern" file holds; nothing for a comment or too short a line.
void parseKerningLine(const WideString& line, KerningTable& kerning);

// Loads a ".fnt" file; one that cannot be opened is logged and leaves `font` as it is.
void loadFontFile(const std::string& path, FontData& font);

// Loads a ".kern" file on top of the pairs that are there. Not every font has one: a missing file
// is not reported.
void loadKerningFile(const std::string& path, FontData& font);

// Null when the font has no glyph for the character.
const Glyph* findGlyph(const FontData& font, uint16_t code);

// The amount in pixels by which `second` is moved behind `first`, if that pair is kerned.
std::optional<int16_t> findKerning(const FontData& font, uint32_t first, uint32_t second);

// Whether pages, glyphs and kerning pairs together take more than the 64 MiB that a face may: such
// a face is not to be made.
bool asksForTooMuch(const FontData& font);
