// Characters that are drawn narrower than their glyphs.
#pragma once

#include <cstdint>

constexpr float NARROW_SCALE = 2.0F / 3.0F;

// Whether the character is drawn at NARROW_SCALE: katakana and the unified ideographs, so that they
// fit the space designed for Latin text. tools/guidata/typeface.py renders them wider.
constexpr bool isNarrowed(uint32_t code) {
    return (code >= 0x30A0 && code <= 0x30FF) || (code >= 0x4E00 && code <= 0x9FFF);
}
