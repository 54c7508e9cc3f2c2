// The glyphs of a line of text as the updater's screen draws it.
#pragma once

#include <cstddef>
#include <set>
#include <vector>

#include "render/font_file.h"

// A visible glyph. Its edges are in pixels from the start and the top of the line, y downwards.
struct DrawnGlyph {
    std::size_t index;  // of the character in the text
    float left, right;
    float top, bottom;
};

struct DrawnText {
    std::vector<DrawnGlyph> glyphs;
    float right = 0;          // right edge of the last glyph, in pixels
    std::set<WCHAR> missing;  // characters that the face lacks
};

// Returns the glyphs of the text up to its first NUL, with kerning, and with katakana and
// ideographs narrowed.
DrawnText drawnText(const FontData& face, const WideString& text);
