// The layout of a ".fnt" file: the published BMFont binary format, version 3. Behind the header
// each block begins with its type in one byte and the length of its content in four. Numbers are
// stored low byte first. tools/guidata/bmfont.py writes it.
#pragma once

#include <cstddef>

constexpr char FONT_HEADER[] = {'B', 'M', 'F', 3};

enum FontBlock : unsigned char { InfoBlock = 1, CommonBlock, PagesBlock, CharsBlock, KerningBlock };

constexpr std::size_t GLYPH_SIZE = 20;
constexpr std::size_t KERNING_PAIR_SIZE = 10;  // two characters of four bytes, an amount of two

// Calls `field` for each field of a glyph in the order of the file. Each has the width of its type.
template <typename AnyGlyph, typename Field>
void forEachField(AnyGlyph& glyph, Field&& field) {
    field(glyph.id);
    field(glyph.x);
    field(glyph.y);
    field(glyph.width);
    field(glyph.height);
    field(glyph.xoffset);
    field(glyph.yoffset);
    field(glyph.xadvance);
    field(glyph.page);
    field(glyph.channel);
}
