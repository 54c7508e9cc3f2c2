#include "tools/guidata/text_encoding.h"

#include <array>
#include <cstdint>
#include <cstdio>

namespace {

// Returns the length of the UTF-8 sequence that begins with `lead`; 0 when no sequence begins with
// it.
int sequenceLength(unsigned char lead) {
    if (lead < 0x80)
        return 1;
    if (lead >= 0xC2 && lead < 0xE0)
        return 2;
    if (lead >= 0xE0 && lead < 0xF0)
        return 3;
    return lead >= 0xF0 && lead < 0xF5 ? 4 : 0;
}

// Decodes the character at `at` and advances `at` past it. Returns nothing when it is malformed.
std::optional<uint32_t> nextCharacter(const std::string& bytes, std::size_t& at) {
    const auto lead = static_cast<unsigned char>(bytes[at]);
    const int length = sequenceLength(lead);
    if (length == 0 || bytes.size() - at < static_cast<std::size_t>(length))
        return std::nullopt;
    constexpr std::array<uint32_t, 5> LEAD_BITS = {0, 0x7F, 0x1F, 0x0F, 0x07};
    constexpr std::array<uint32_t, 5> SMALLEST = {0, 0, 0x80, 0x800, 0x10000};
    const auto index = static_cast<std::size_t>(length);
    uint32_t code = lead & LEAD_BITS[index];
    for (std::size_t i = 1; i < index; ++i) {
        const auto byte = static_cast<unsigned char>(bytes[at + i]);
        if ((byte & 0xC0) != 0x80)
            return std::nullopt;
        code = (code << 6) | (byte & 0x3F);
    }
    const bool surrogate = code >= 0xD800 && code < 0xE000;
    if (code < SMALLEST[index] || code > 0x10FFFF || surrogate)
        return std::nullopt;
    at += index;
    return code;
}

}  // namespace

std::optional<std::u16string> utf16FromUtf8(const std::string& bytes) {
    const std::string byteOrderMark = "\xEF\xBB\xBF";
    std::u16string text;
    std::size_t at = bytes.compare(0, byteOrderMark.size(), byteOrderMark) == 0 ? 3 : 0;
    while (at < bytes.size()) {
        const std::optional<uint32_t> code = nextCharacter(bytes, at);
        if (!code)
            return std::nullopt;
        if (*code < 0x10000) {
            text += static_cast<char16_t>(*code);
        } else {
            text += static_cast<char16_t>(0xD800 + ((*code - 0x10000) >> 10));
            text += static_cast<char16_t>(0xDC00 + (*code & 0x3FF));
        }
    }
    return text;
}

std::string utf16LittleEndian(const std::u16string& text) {
    std::string bytes;
    for (const char16_t character : text) {
        bytes += static_cast<char>(character & 0xFF);
        bytes += static_cast<char>(character >> 8);
    }
    return bytes;
}

std::string characterName(char16_t character) {
    std::array<char, 8> name{};
    std::snprintf(name.data(), name.size(), "U+%04X", static_cast<unsigned>(character));
    return name.data();
}
