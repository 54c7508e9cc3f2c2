#include "tools/guidata/bmfont_writer.h"

namespace {

enum BlockType : char { InfoBlock = 1, CommonBlock, PagesBlock, CharsBlock, KerningBlock };

void put8(std::string& bytes, unsigned value) {
    bytes += static_cast<char>(value & 0xFF);
}

void put16(std::string& bytes, int value) {
    const auto bits = static_cast<unsigned>(value);
    put8(bytes, bits);
    put8(bytes, bits >> 8);
}

void put32(std::string& bytes, uint32_t value) {
    put8(bytes, value);
    put8(bytes, value >> 8);
    put8(bytes, value >> 16);
    put8(bytes, value >> 24);
}

void putBlock(std::string& bytes, BlockType type, const std::string& content) {
    put8(bytes, static_cast<unsigned>(type));
    put32(bytes, static_cast<uint32_t>(content.size()));
    bytes += content;
}

std::string infoBlock(const std::string& fontName, int emSize) {
    constexpr unsigned SMOOTH_AND_UNICODE = 0xC0;
    constexpr int UNSTRETCHED = 100;
    std::string block;
    put16(block, -emSize);  // negative: the size of the em
    put8(block, SMOOTH_AND_UNICODE);
    put8(block, 0);  // no character set: the font is Unicode
    put16(block, UNSTRETCHED);
    put8(block, 1);  // no supersampling
    for (int side = 0; side < 4; ++side)
        put8(block, 0);  // padding inside a cell
    put8(block, 1);      // horizontal spacing between cells
    put8(block, 1);      // vertical spacing
    put8(block, 0);      // no outline
    return block + fontName + '\0';
}

std::string commonBlock(const FontData& font) {
    std::string block;
    const auto pages = static_cast<uint32_t>(font.pageNames.size());
    for (const uint32_t value : {font.lineHeight, font.base, font.atlasSize, font.atlasSize, pages})
        put16(block, static_cast<int>(value));
    put8(block, 0);  // not packed into channels
    for (int channel = 0; channel < 4; ++channel)
        put8(block, 0);  // each channel holds the glyphs' coverage
    return block;
}

std::string pagesBlock(const FontData& font) {
    std::string block;
    for (const std::string& name : font.pageNames)
        block += name + '\0';
    return block;
}

std::string charsBlock(const FontData& font) {
    std::string block;
    for (const auto& [code, glyph] : font.glyphs) {
        put32(block, code);
        put16(block, glyph.x);
        put16(block, glyph.y);
        put16(block, glyph.width);
        put16(block, glyph.height);
        put16(block, glyph.xoffset);
        put16(block, glyph.yoffset);
        put16(block, glyph.xadvance);
        put8(block, glyph.page);
        put8(block, glyph.channel);
    }
    return block;
}

std::string kerningBlock(const FontData& font) {
    std::string block;
    for (const auto& [pair, amount] : font.kerning) {
        put32(block, pair.first);
        put32(block, pair.second);
        put16(block, amount);
    }
    return block;
}

}  // namespace

std::string encodeBmFont(const FontData& font, const std::string& fontName, int emSize) {
    std::string bytes = "BMF\x03";
    putBlock(bytes, InfoBlock, infoBlock(fontName, emSize));
    putBlock(bytes, CommonBlock, commonBlock(font));
    putBlock(bytes, PagesBlock, pagesBlock(font));
    putBlock(bytes, CharsBlock, charsBlock(font));
    putBlock(bytes, KerningBlock, kerningBlock(font));
    return bytes;
}
