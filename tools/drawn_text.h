// How a line of text comes out when the updater's screen draws it with a face.
#pragma once

#include <cstddef>
#include <set>
#include <vector>

#include "render/font_file.h"

// A glyph that shows something; pixels from the start of the line, y downwards.
struct DrawnGlyph {
    std::size_t index;  // of its character in the text
    float left, right;
    float top, bottom;
};

struct DrawnText {
    std::vector<DrawnGlyph> glyphs;
    float right = 0;          // where the last glyph ends, pixels from the start of the line
    std::set<WCHAR> missing;  // characters that the face lacks and that are left out
};

// Kerned, ideographs and katakana narrowed to two thirds, up to the first NUL.
DrawnText drawnText(const FontData& face, const WideString& text);
