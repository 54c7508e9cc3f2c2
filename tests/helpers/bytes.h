// Encodes numbers and texts as in the device's files: little-endian.
#pragma once

#include <cstdint>
#include <string>

#include "support/text.h"

inline std::string u16Bytes(unsigned value) {
    return {static_cast<char>(value & 0xFF), static_cast<char>(value >> 8 & 0xFF)};
}

inline std::string u32Bytes(uint32_t value) {
    return u16Bytes(value & 0xFFFF) + u16Bytes(value >> 16);
}

// Encodes UTF-16LE text, as in ".kern" files and string tables.
inline std::string utf16Bytes(const WideString& text) {
    std::string bytes;
    for (const WCHAR character : text)
        bytes += u16Bytes(character);
    return bytes;
}
