#include "platform/posix/registry/registry_value.h"

#include <algorithm>
#include <charconv>
#include <cstdio>

#include "platform/utf.h"

namespace host {
namespace {

bool startsWith(std::string_view text, std::string_view start) {
    return text.substr(0, start.size()) == start;
}

// Parses one to `most` hexadecimal digits.
bool readNumber(std::string_view text, std::size_t most, DWORD& number) {
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number, 16);
    return text.size() <= most && error == std::errc() && stop == end;
}

void appendUnit(std::vector<BYTE>& bytes, unsigned unit) {
    bytes.push_back(static_cast<BYTE>(unit & 0xFF));
    bytes.push_back(static_cast<BYTE>(unit >> 8));
}

// Parses what follows "hex": ":01,02", or "(2):01,02" with the number of the type.
bool readBytes(std::string_view text, RegistryValue& value) {
    const std::size_t colon = text.find(':');
    if (colon == std::string_view::npos)
        return false;
    const std::string_view type = text.substr(0, colon);
    value.type = REG_BINARY;
    if (!type.empty() && (type.size() < 3 || type.front() != '(' || type.back() != ')' ||
                          !readNumber(type.substr(1, type.size() - 2), 8, value.type)))
        return false;
    for (std::size_t at = colon + 1; at < text.size();) {
        const std::size_t end = std::min(text.find(',', at), text.size());
        DWORD byte = 0;
        if (!readNumber(text.substr(at, end - at), 2, byte))
            return false;
        value.data.push_back(static_cast<BYTE>(byte));
        at = end + 1;
    }
    return true;
}

// Whether the value is a text that ends in its terminator and fits in a line of any encoding.
bool isPlainText(const RegistryValue& value) {
    const std::size_t size = value.data.size();
    if (value.type != REG_SZ || size < 2 || size % 2 != 0)
        return false;
    for (std::size_t i = 0; i < size; i += 2) {
        const unsigned unit = unsigned{value.data[i]} | (unsigned{value.data[i + 1]} << 8U);
        const bool last = i + 2 == size;
        const bool isSurrogate = unit >= 0xD800 && unit <= 0xDFFF;
        if (last ? unit != 0 : unit < 0x20 || isSurrogate)
            return false;
    }
    return true;
}

}  // namespace

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

bool readValue(std::u16string_view text, RegistryValue& value) {
    value = {};
    if (std::u16string plain; takeQuoted(text, plain)) {
        value.type = REG_SZ;
        for (const char16_t unit : plain)
            appendUnit(value.data, unit);
        appendUnit(value.data, 0);
        return text.empty();
    }
    const std::string form = toUtf8(text);
    if (startsWith(form, "hex"))
        return readBytes(std::string_view(form).substr(3), value);
    DWORD number = 0;
    if (!startsWith(form, "dword:") || !readNumber(std::string_view(form).substr(6), 8, number))
        return false;
    value.type = REG_DWORD;
    appendUnit(value.data, number & 0xFFFF);
    appendUnit(value.data, number >> 16);
    return true;
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
