#include "tools/updatekey/check/drawn_text.h"

#include <algorithm>

#include "render/text_layout.h"

DrawnText drawnText(const FontData& face, const WideString& text) {
    DrawnText drawn;
    const auto draw = [&](const PlacedGlyph& placed) {
        const auto top = static_cast<float>(placed.top);
        const auto bottom = top + static_cast<float>(placed.glyph.height);
        if (text[placed.index] != TEXT(' ') && placed.glyph.width > 0)
            drawn.glyphs.push_back({placed.index, placed.left, placed.right, top, bottom});
        drawn.right = std::max(drawn.right, placed.right);
    };
    layOutLine(face, text, 0, true, draw, [&](WCHAR code) { drawn.missing.insert(code); });
    return drawn;
}
