#include "tools/guidata/text_encoding.h"

#include <array>
#include <cstdio>
#include <string_view>

#include "platform/utf.h"

std::optional<std::u16string> utf16FromUtf8(const std::string& bytes) {
    constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";
    std::string_view text = bytes;
    if (text.substr(0, BYTE_ORDER_MARK.size()) == BYTE_ORDER_MARK)
        text.remove_prefix(BYTE_ORDER_MARK.size());
    return host::isUtf8(text) ? std::optional(host::toUtf16(text)) : std::nullopt;
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
