// Builds the bytes of font files.
#pragma once

#include <string>
#include <vector>

#include "render/font_file.h"
#include "tests/helpers/bytes.h"

inline std::string block(char type, const std::string& content) {
    return type + u32Bytes(static_cast<uint32_t>(content.size())) + content;
}

inline std::string commonBlock(unsigned lineHeight, unsigned base, unsigned scaleW) {
    return block(2,
                 u16Bytes(lineHeight) + u16Bytes(base) + u16Bytes(scaleW) + std::string(9, '\0'));
}

// Names one page; the program replaces the extension and reads "page.raw".
inline std::string pageBlock() {
    return block(3, std::string("page.png") + '\0');
}

inline std::string glyphRecord(const Glyph& glyph) {
    std::string bytes = u32Bytes(glyph.id);
    for (const int field : {+glyph.x, +glyph.y, +glyph.width, +glyph.height, +glyph.xoffset,
                            +glyph.yoffset, +glyph.xadvance})
        bytes += u16Bytes(static_cast<unsigned>(field));
    return bytes + static_cast<char>(glyph.page) + static_cast<char>(glyph.channel);
}

inline std::string kerningRecord(uint32_t first, uint32_t second, int amount) {
    return u32Bytes(first) + u32Bytes(second) + u16Bytes(static_cast<unsigned>(amount));
}

// A complete ".fnt" file.
inline std::string fontBytes(unsigned lineHeight, unsigned scaleW, const std::vector<Glyph>& glyphs,
                             const std::string& kerningRecords = "") {
    std::string records;
    for (const Glyph& glyph : glyphs)
        records += glyphRecord(glyph);
    return std::string("BMF\3") + block(1, "info") + commonBlock(lineHeight, lineHeight, scaleW) +
           pageBlock() + block(4, records) + block(5, kerningRecords);
}
