#include "platform/posix/registry/registry_value.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "platform/posix/utf.h"

namespace host {
namespace {

std::vector<BYTE> textBytes(const std::u16string& text) {
    std::vector<BYTE> bytes;
    for (std::size_t i = 0; i <= text.size(); ++i) {
        const unsigned unit = i < text.size() ? text[i] : 0;
        bytes.push_back(static_cast<BYTE>(unit & 0xFF));
        bytes.push_back(static_cast<BYTE>(unit >> 8));
    }
    return bytes;
}

// Parses at most `digits` hexadecimal digits, with optional blanks around them.
bool readDigits(std::u16string_view text, std::size_t digits, DWORD& number) {
    const std::string narrow = toUtf8(trimmed(text));
    if (narrow.empty() || narrow.size() > digits ||
        narrow.find_first_not_of("0123456789abcdefABCDEF") != std::string::npos)
        return false;
    number = static_cast<DWORD>(std::strtoul(narrow.c_str(), nullptr, 16));
    return true;
}

// Parses "dword:0000001f".
bool readNumber(std::u16string_view text, RegistryValue& value) {
    DWORD number = 0;
    if (!readDigits(text, 8, number))
        return false;
    value.type = REG_DWORD;
    for (unsigned shift = 0; shift < 32; shift += 8)
        value.data.push_back(static_cast<BYTE>((number >> shift) & 0xFF));
    return true;
}

// Parses "hex:01,02" and "hex(2):01,02"; the number in brackets is the type.
bool readHex(std::u16string_view text, RegistryValue& value) {
    const std::size_t colon = text.find(u':');
    if (colon == std::u16string_view::npos)
        return false;
    const std::u16string_view type = text.substr(0, colon);
    value.type = REG_BINARY;
    if (!type.empty() && (type.size() < 3 || type.front() != u'(' || type.back() != u')' ||
                          !readDigits(type.substr(1, type.size() - 2), 8, value.type)))
        return false;
    text = trimmed(text.substr(colon + 1));
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(u','), text.size());
        DWORD byte = 0;
        if (!readDigits(text.substr(0, end), 2, byte))
            return false;
        value.data.push_back(static_cast<BYTE>(byte));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return true;
}

bool isPlainText(const RegistryValue& value) {
    const std::size_t size = value.data.size();
    if (value.type != REG_SZ || size < 2 || size % 2 != 0)
        return false;
    for (std::size_t i = 0; i < size; i += 2) {
        const unsigned unit = unsigned{value.data[i]} | (unsigned{value.data[i + 1]} << 8U);
        const bool last = i + 2 == size;
        if (last ? unit != 0 : unit < 0x20)
            return false;
    }
    return true;
}

}  // namespace

bool startsWith(std::u16string_view text, std::u16string_view start) {
    return text.substr(0, start.size()) == start;
}

std::u16string_view trimmed(std::u16string_view text) {
    constexpr char16_t BLANKS[] = u" \t\r\n";
    const std::size_t first = text.find_first_not_of(BLANKS);
    if (first == std::u16string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(BLANKS) - first + 1);
}

bool takeQuoted(std::u16string_view& line, std::u16string& text) {
    if (line.empty() || line[0] != u'"')
        return false;
    for (std::size_t i = 1; i < line.size(); ++i) {
        if (line[i] == u'"') {
            line.remove_prefix(i + 1);
            return true;
        }
        if (line[i] == u'\\' && i + 1 < line.size())
            ++i;
        text += line[i];
    }
    return false;
}

std::u16string quoted(std::u16string_view text) {
    std::u16string result = u"\"";
    for (const char16_t c : text) {
        if (c == u'"' || c == u'\\')
            result += u'\\';
        result += c;
    }
    return result + u"\"";
}

bool takeValue(std::u16string_view& text, RegistryValue& value) {
    std::u16string plain;
    if (takeQuoted(text, plain)) {
        value = {REG_SZ, textBytes(plain)};
        return true;
    }
    const std::u16string_view form = text.substr(0, text.find(u';'));
    text.remove_prefix(form.size());
    if (startsWith(form, u"dword:"))
        return readNumber(form.substr(6), value);
    return startsWith(form, u"hex") && readHex(form.substr(3), value);
}

std::u16string valueText(const RegistryValue& value) {
    char buffer[16];
    if (isPlainText(value)) {
        std::u16string text;
        for (std::size_t i = 0; i + 2 < value.data.size(); i += 2)
            text += static_cast<char16_t>(value.data[i] | (value.data[i + 1] << 8U));
        return quoted(text);
    }
    if (value.type == REG_DWORD && value.data.size() == 4) {
        std::snprintf(buffer, sizeof buffer, "dword:%02x%02x%02x%02x", value.data[3], value.data[2],
                      value.data[1], value.data[0]);
        return toUtf16(buffer);
    }
    std::string text = "hex:";
    if (value.type != REG_BINARY) {
        std::snprintf(buffer, sizeof buffer, "hex(%x):", value.type);
        text = buffer;
    }
    for (std::size_t i = 0; i < value.data.size(); ++i) {
        std::snprintf(buffer, sizeof buffer, i == 0 ? "%02x" : ",%02x", value.data[i]);
        text += buffer;
    }
    return toUtf16(text);
}

}  // namespace host
