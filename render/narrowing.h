// Characters that are drawn narrower than their glyphs are.
#pragma once

#include <cstdint>

constexpr float NARROW_SCALE = 2.0F / 3.0F;

// Whether the character is drawn at that part of its width: katakana and the unified ideographs
// are, to fit the room that the screens were laid out with for Latin text.
constexpr bool isNarrowed(uint32_t code) {
    return (code >= 0x30A0 && code <= 0x30FF) || (code >= 0x4E00 && code <= 0x9FFF);
}
