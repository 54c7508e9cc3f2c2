// How a line of text lies: which of its characters are drawn, and where.
#pragma once

#include <cstddef>
#include <string_view>

#include "render/font_file.h"
#include "render/narrowing.h"

using WideText = std::basic_string_view<WCHAR>;

struct PlacedGlyph {
    const Glyph& glyph;
    std::size_t index;  // of its character in the text
    float left, right;  // x, with kerning and narrowing
    int32_t top;        // from the top of the line
};

// Lays out a line up to its first NUL, from the x at which the pen starts. Calls
// `onGlyph(const PlacedGlyph&)` for what is drawn and `onMissing(WCHAR)` for a character without a
// glyph, which takes no room. Line breaks and byte-order marks are passed over, and glyphs of a
// page that the font does not name. Allocates nothing.
template <typename OnGlyph, typename OnMissing>
void layOutLine(const FontData& font, WideText text, float pen, bool useKerning, OnGlyph onGlyph,
                OnMissing onMissing) {
    constexpr WCHAR byteOrderMark = 0xFEFF;
    const WideText line = text.substr(0, text.find(WCHAR{}));
    for (std::size_t i = 0; i < line.size(); ++i) {
        const WCHAR code = line[i];
        if (code == byteOrderMark || code == TEXT('\r') || code == TEXT('\n'))
            continue;
        const Glyph* const glyph = findGlyph(font, code);
        if (glyph == nullptr) {
            onMissing(code);
            continue;
        }
        if (glyph->page >= font.pageNames.size())
            continue;
        // The pair is made with the character in front even if that one was not drawn, and it moves
        // this glyph only, not the pen: texts were laid out with that.
        const int kerning =
            useKerning && i > 0 ? findKerning(font, line[i - 1], code).value_or(0) : 0;
        const float left = pen + static_cast<float>(kerning);
        const float scale = isNarrowed(code) ? NARROW_SCALE : 1.0F;
        const float right = left + static_cast<float>(glyph->width) * scale;
        // The font tool's signed numbers have always been read as unsigned.
        onGlyph(PlacedGlyph{*glyph, i, left, right, static_cast<uint16_t>(glyph->yoffset)});
        pen += static_cast<float>(static_cast<uint16_t>(glyph->xadvance)) * scale;
    }
}
