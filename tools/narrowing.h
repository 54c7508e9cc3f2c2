// The device draws katakana and the CJK ideographs at two thirds of their baked width.
#pragma once

constexpr bool isNarrowed(char16_t character) {
    return (character >= 0x30A0 && character <= 0x30FF) ||
           (character >= 0x4E00 && character <= 0x9FFF);
}
