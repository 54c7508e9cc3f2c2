#include "tools/drawn_text.h"

#include <algorithm>

#include "render/narrowing.h"

namespace {

bool isPassedOver(WCHAR code) {
    return code == 0xFEFF || code == TEXT('\r') || code == TEXT('\n');
}

}  // namespace

DrawnText drawnText(const FontData& face, const WideString& text) {
    DrawnText drawn;
    const WideString line = text.substr(0, text.find(WCHAR{}));
    float pen = 0;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (isPassedOver(line[i]))
            continue;
        const auto entry = face.glyphs.find(static_cast<uint16_t>(line[i]));
        if (entry == face.glyphs.end()) {
            drawn.missing.insert(line[i]);
            continue;
        }
        const Glyph& glyph = entry->second;
        const auto pair = i > 0 ? face.kerning.find({line[i - 1], line[i]}) : face.kerning.end();
        const float left = pen + (pair != face.kerning.end() ? pair->second : 0.0F);
        const float scale = isNarrowed(line[i]) ? NARROW_SCALE : 1.0F;
        const auto top = static_cast<float>(static_cast<uint16_t>(glyph.yoffset));
        const float right = left + static_cast<float>(glyph.width) * scale;
        if (line[i] != TEXT(' ') && glyph.width > 0)
            drawn.glyphs.push_back({i, left, right, top, top + static_cast<float>(glyph.height)});
        drawn.right = std::max(drawn.right, right);
        pen += static_cast<float>(static_cast<uint16_t>(glyph.xadvance)) * scale;
    }
    return drawn;
}
