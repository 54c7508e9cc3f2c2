// The files of a bitmap font: ".fnt" with the metrics of the glyphs and the names of their pages,
// and ".kern" with further kerning pairs.
//
// Of a damaged file, everything before the fault is used. A file that exceeds the limits of a face
// is not read to its end.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/win32.h"

// A glyph as the ".fnt" file stores it. Lengths in pixels.
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

// Adds the content of a ".fnt" file to `font`. Adds nothing when the header is wrong. Returns
// whether the file is whole, without anything after its last block.
bool parseFont(const unsigned char* bytes, std::size_t size, FontData& font);

// Adds the kerning pair in a line of a ".kern" file. Ignores comments and lines that are too short.
void parseKerningLine(const WideString& line, KerningTable& kerning);

// Loads a ".fnt" file. When it cannot be opened, logs an error and leaves `font` unchanged.
void loadFontFile(const std::string& path, FontData& font);

// Adds the pairs of a ".kern" file. A missing file is not reported: not every font has one.
void loadKerningFile(const std::string& path, FontData& font);

// Returns null when the font has no glyph for the character.
const Glyph* findGlyph(const FontData& font, uint16_t code);

// Returns the kerning of `second` after `first` in pixels, or nothing for a pair without kerning.
std::optional<int16_t> findKerning(const FontData& font, uint32_t first, uint32_t second);

// Whether pages, glyphs and kerning pairs together need more than the 64 MiB that a face may use.
// Such a face must not be created.
bool needsTooMuchMemory(const FontData& font);
