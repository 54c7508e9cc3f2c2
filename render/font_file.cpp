#include "render/font_file.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "platform/input_limits.h"
#include "render/font_layout.h"
#include "support/logger.h"
#include "support/open_file.h"
#include "support/text.h"
#include "support/utf16_reader.h"

namespace {

constexpr int BLOCK_COUNT = 5;
constexpr std::size_t BLOCK_HEADER_SIZE = 5;
constexpr std::size_t COMMON_SIZE_USED = 6;
constexpr std::size_t SHORTEST_KERNING_LINE = 4;

// A glyph refers to its page with one byte, so no glyph can use further pages.
constexpr std::size_t MAX_PAGES = 256;

constexpr uint64_t TABLE_ENTRY_BYTES = 64;  // memory of a glyph or a kerning pair

// Reads a number of the width of its type. Returns the byte behind it.
template <typename Number>
const unsigned char* readField(const unsigned char* bytes, Number& number) {
    uint32_t bits = 0;
    for (std::size_t i = 0; i < sizeof number; ++i)
        bits |= static_cast<uint32_t>(bytes[i]) << (8 * i);
    number = static_cast<Number>(bits);
    return bytes + sizeof number;
}

template <typename Number>
Number read(const unsigned char* bytes) {
    Number number = 0;
    readField(bytes, number);
    return number;
}

void parseCommon(const unsigned char* content, std::size_t size, FontData& font) {
    if (size < COMMON_SIZE_USED)
        return;
    font.lineHeight = read<uint16_t>(content);
    font.base = read<uint16_t>(content + 2);
    font.atlasSize = read<uint16_t>(content + 4);
}

// Every name has the length of the first. An incomplete name at the end of the block is ignored.
void parsePages(const unsigned char* content, std::size_t size, FontData& font) {
    const unsigned char* const end = content + size;
    const std::size_t length = static_cast<std::size_t>(std::find(content, end, 0) - content);
    const std::size_t count = size / (length + 1);
    for (std::size_t i = 0; i < count && font.pageNames.size() < MAX_PAGES; ++i) {
        const unsigned char* const name = content + i * (length + 1);
        std::string& kept = font.pageNames.emplace_back(name, std::find(name, name + length, 0));
        // No file name contains a control character. Replacing it keeps the log message about a
        // missing page on one line.
        std::replace_if(
            kept.begin(), kept.end(), [](unsigned char c) { return c < ' '; }, '?');
    }
}

void parseChars(const unsigned char* content, std::size_t size, FontData& font) {
    for (std::size_t i = 0; i < size / GLYPH_SIZE; ++i) {
        const unsigned char* next = content + i * GLYPH_SIZE;
        Glyph glyph{};
        forEachField(glyph, [&next](auto& field) { next = readField(next, field); });
        font.glyphs[static_cast<uint16_t>(glyph.id)] = glyph;
    }
}

void parseKerningPairs(const unsigned char* content, std::size_t size, FontData& font) {
    for (std::size_t i = 0; i < size / KERNING_PAIR_SIZE && !needsTooMuchMemory(font); ++i) {
        const unsigned char* const record = content + i * KERNING_PAIR_SIZE;
        font.kerning[{read<uint32_t>(record), read<uint32_t>(record + 4)}] =
            read<int16_t>(record + 8);
    }
}

void parseBlock(unsigned char type, const unsigned char* content, std::size_t size,
                FontData& font) {
    if (type == CommonBlock)
        parseCommon(content, size, font);
    else if (type == PagesBlock)
        parsePages(content, size, font);
    else if (type == CharsBlock)
        parseChars(content, size, font);
    else if (type == KerningBlock)
        parseKerningPairs(content, size, font);
}

}  // namespace

bool parseFont(const unsigned char* bytes, std::size_t size, FontData& font) {
    if (size < sizeof FONT_HEADER || std::memcmp(bytes, FONT_HEADER, sizeof FONT_HEADER) != 0)
        return false;
    std::size_t position = sizeof FONT_HEADER;
    int blocks = 0;
    for (; blocks < BLOCK_COUNT && size - position >= BLOCK_HEADER_SIZE; ++blocks) {
        const unsigned char type = bytes[position];
        const int32_t stated = read<int32_t>(bytes + position + 1);
        position += BLOCK_HEADER_SIZE;
        if (stated < 0)
            return false;
        // Of a truncated file, the complete records before the cut are used.
        const std::size_t present = std::min(static_cast<std::size_t>(stated), size - position);
        parseBlock(type, bytes + position, present, font);
        position += present;
        if (present < static_cast<std::size_t>(stated))
            return false;
    }
    return blocks == BLOCK_COUNT && position == size;
}

void parseKerningLine(const WideString& line, KerningTable& kerning) {
    // CR LF counts as one character, as a single CR or LF does.
    const bool twoCharacterBreak =
        line.size() >= 2 && line.compare(line.size() - 2, 2, TEXT("\r\n")) == 0;
    const std::size_t length = line.size() - (twoCharacterBreak ? 1 : 0);
    if (length < SHORTEST_KERNING_LINE || line[0] == TEXT('#'))
        return;
    // Any one character separates the pair from its amount.
    const std::string amount = narrow(line.substr(3));
    kerning[{line[0], line[1]}] = static_cast<int16_t>(std::strtol(amount.c_str(), nullptr, 10));
}

void loadFontFile(const std::string& path, FontData& font) {
    const FilePointer file = openFile(path, TEXT("rb"));
    if (file == nullptr) {
        Logger::instance().error("Font file %s not found.\n", path.c_str());
        return;
    }
    const uint64_t length = bytesLeft(file.get());
    // A 32-bit system cannot count 2 GiB: the length of such a file is given as 0.
    if (length > limits::FONT_FILE || (length == 0 && std::fgetc(file.get()) != EOF)) {
        Logger::instance().error("Font file %s is too large.\n", path.c_str());
        return;
    }
    std::vector<unsigned char> bytes(static_cast<std::size_t>(length));
    const std::size_t size = std::fread(bytes.data(), 1, bytes.size(), file.get());
    parseFont(bytes.data(), size, font);
}

void loadKerningFile(const std::string& path, FontData& font) {
    Utf16Reader file(path, limits::KERNING_FILE);
    WideString line;
    while (!needsTooMuchMemory(font) && file.readLine(line))
        parseKerningLine(line, font.kerning);
}

const Glyph* findGlyph(const FontData& font, uint16_t code) {
    const auto entry = font.glyphs.find(code);
    return entry != font.glyphs.end() ? &entry->second : nullptr;
}

std::optional<int16_t> findKerning(const FontData& font, uint32_t first, uint32_t second) {
    const auto entry = font.kerning.find({first, second});
    return entry != font.kerning.end() ? std::make_optional(entry->second) : std::nullopt;
}

bool needsTooMuchMemory(const FontData& font) {
    const uint64_t pageBytes = uint64_t{font.atlasSize} * font.atlasSize;
    const uint64_t entries = font.glyphs.size() + font.kerning.size();
    return font.pageNames.size() * pageBytes + entries * TABLE_ENTRY_BYTES > limits::FACE_IN_MEMORY;
}
