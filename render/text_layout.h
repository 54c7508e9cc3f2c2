// The layout of a line of text: the glyphs to draw and their positions.
#pragma once

#include <cstddef>
#include <string_view>

#include "render/font_file.h"
#include "render/narrowing.h"

using WideText = std::basic_string_view<WCHAR>;

struct PlacedGlyph {
    const Glyph& glyph;
    std::size_t index;  // of the character in the text
    float left, right;  // x coordinates, after kerning and narrowing
    int32_t top;        // y, from the top of the line
};

// Lays out a line up to its first NUL, starting at x = `pen`. Calls `onGlyph(const PlacedGlyph&)`
// for every glyph to draw, and `onMissing(WCHAR)` for every character without a glyph, which takes
// no space. Skips line breaks, byte-order marks, and glyphs whose page the font does not list.
// Allocates nothing.
template <typename OnGlyph, typename OnMissing>
void layOutLine(const FontData& font, WideText text, float pen, bool useKerning, OnGlyph onGlyph,
                OnMissing onMissing) {
    constexpr WCHAR BYTE_ORDER_MARK = 0xFEFF;
    const WideText line = text.substr(0, text.find(WCHAR{}));
    for (std::size_t i = 0; i < line.size(); ++i) {
        const WCHAR code = line[i];
        if (code == BYTE_ORDER_MARK || code == TEXT('\r') || code == TEXT('\n'))
            continue;
        const Glyph* const glyph = findGlyph(font, code);
        if (glyph == nullptr) {
            onMissing(code);
            continue;
        }
        if (glyph->page >= font.pageNames.size())
            continue;
        // A skipped character still forms a kerning pair with the next one, and kerning moves the
        // glyph but not the pen. Kept.
        const int kerning =
            useKerning && i > 0 ? findKerning(font, line[i - 1], code).value_or(0) : 0;
        const float left = pen + static_cast<float>(kerning);
        const float scale = isNarrowed(code) ? NARROW_SCALE : 1.0F;
        const float right = left + static_cast<float>(glyph->width) * scale;
        // Signed offsets and advances are read as unsigned. Kept.
        onGlyph(PlacedGlyph{*glyph, i, left, right, static_cast<uint16_t>(glyph->yoffset)});
        pen += static_cast<float>(static_cast<uint16_t>(glyph->xadvance)) * scale;
    }
}
