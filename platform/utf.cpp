#include "platform/utf.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace host {
namespace {

constexpr uint32_t INVALID = 0xFFFFFFFF;

// Returns the code point at `utf8[at]` and its length in bytes; INVALID and length 1 when there is
// none.
uint32_t decode(std::string_view utf8, std::size_t at, std::size_t& length) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(utf8[i]); };
    const unsigned char lead = byte(at);
    length = 1;
    if (lead < 0x80)
        return lead;
    const std::size_t size = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || at + size > utf8.size())
        return INVALID;
    uint32_t point = lead & (0xFFU >> (size + 1));
    for (std::size_t i = 1; i < size; ++i) {
        if ((byte(at + i) & 0xC0) != 0x80)
            return INVALID;
        point = (point << 6) | (byte(at + i) & 0x3F);
    }
    constexpr uint32_t SMALLEST[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = point >= 0xD800 && point <= 0xDFFF;
    if (point < SMALLEST[size] || point > 0x10FFFF || surrogate)
        return INVALID;
    length = size;
    return point;
}

void appendPoint(std::string& text, uint32_t point) {
    if (point < 0x80) {
        text += static_cast<char>(point);
        return;
    }
    const unsigned more = point < 0x800 ? 1 : point < 0x10000 ? 2 : 3;
    text += static_cast<char>((0xFF00U >> (more + 1)) | (point >> (6 * more)));
    for (unsigned i = more; i-- > 0;)
        text += static_cast<char>(0x80 | ((point >> (6 * i)) & 0x3F));
}

char16_t lowerLatin1(char16_t c) {
    const bool ascii = c >= u'A' && c <= u'Z';
    const bool accented = c >= 0xC0 && c <= 0xDE && c != 0xD7;
    return ascii || accented ? static_cast<char16_t>(c + 0x20) : c;
}

}  // namespace

bool isUtf8(std::string_view bytes) {
    std::size_t length = 0;
    for (std::size_t i = 0; i < bytes.size(); i += length)
        if (decode(bytes, i, length) == INVALID)
            return false;
    return true;
}

std::u16string toUtf16(std::string_view utf8) {
    std::u16string wide;
    wide.reserve(utf8.size());
    std::size_t length = 0;
    for (std::size_t i = 0; i < utf8.size(); i += length) {
        const uint32_t point = decode(utf8, i, length);
        if (point == INVALID) {
            wide += static_cast<char16_t>(0xDC00 + static_cast<unsigned char>(utf8[i]));
        } else if (point < 0x10000) {
            wide += static_cast<char16_t>(point);
        } else {
            wide += static_cast<char16_t>(0xD800 + ((point - 0x10000) >> 10));
            wide += static_cast<char16_t>(0xDC00 + ((point - 0x10000) & 0x3FF));
        }
    }
    return wide;
}

std::string toUtf8(std::u16string_view utf16) {
    std::string text;
    text.reserve(utf16.size());
    appendUtf8(text, utf16);
    return text;
}

void appendUtf8(std::string& text, std::u16string_view utf16) {
    for (std::size_t i = 0; i < utf16.size(); ++i) {
        const uint32_t unit = utf16[i];
        const bool high = unit >= 0xD800 && unit <= 0xDBFF;
        const bool pair =
            high && i + 1 < utf16.size() && utf16[i + 1] >= 0xDC00 && utf16[i + 1] <= 0xDFFF;
        if (pair)
            appendPoint(text, 0x10000 + ((unit - 0xD800) << 10) + (utf16[++i] - 0xDC00U));
        else if (unit >= 0xDC80 && unit <= 0xDCFF)
            text += static_cast<char>(unit - 0xDC00);
        else
            appendPoint(text, unit);
    }
}

std::string foldCase(const std::string& utf8) {
    std::u16string wide = toUtf16(utf8);
    std::transform(wide.begin(), wide.end(), wide.begin(), lowerLatin1);
    return toUtf8(wide);
}

}  // namespace host
