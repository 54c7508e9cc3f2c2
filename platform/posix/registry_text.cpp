// The text form of the registry.

#include "platform/posix/registry_file.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include "platform/posix/utf.h"

namespace host {
namespace {

std::u16string folded(std::u16string_view text) {
    std::u16string result(text);
    for (char16_t& c : result) {
        if (c >= u'A' && c <= u'Z')
            c = static_cast<char16_t>(c - u'A' + u'a');
    }
    return result;
}

bool startsWith(std::u16string_view text, std::u16string_view start) {
    return text.substr(0, start.size()) == start;
}

std::u16string_view trimmed(std::u16string_view text) {
    const std::size_t first = text.find_first_not_of(u" \t\r");
    if (first == std::u16string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(u" \t\r") - first + 1);
}

// Reads a text between quotes at the start of `line`, and takes it off. Returns false without one.
bool takeQuoted(std::u16string_view& line, std::u16string& text) {
    text.clear();
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

std::vector<BYTE> textBytes(const std::u16string& text) {
    std::vector<BYTE> bytes;
    for (std::size_t i = 0; i <= text.size(); ++i) {
        const unsigned unit = i < text.size() ? text[i] : 0;
        bytes.push_back(static_cast<BYTE>(unit & 0xFF));
        bytes.push_back(static_cast<BYTE>(unit >> 8));
    }
    return bytes;
}

// Reads `digits` hexadecimal digits at most and nothing else but blanks around them.
bool readDigits(std::u16string_view text, std::size_t digits, DWORD& number) {
    const std::string narrow = toUtf8(trimmed(text));
    if (narrow.empty() || narrow.size() > digits ||
        narrow.find_first_not_of("0123456789abcdefABCDEF") != std::string::npos)
        return false;
    number = static_cast<DWORD>(std::strtoul(narrow.c_str(), nullptr, 16));
    return true;
}

// "dword:0000001f"
bool readNumber(std::u16string_view text, RegistryValue& value) {
    DWORD number = 0;
    if (!readDigits(text, 8, number))
        return false;
    value.type = REG_DWORD;
    for (unsigned shift = 0; shift < 32; shift += 8)
        value.data.push_back(static_cast<BYTE>((number >> shift) & 0xFF));
    return true;
}

// "hex:01,02" and "hex(2):01,02"; the number in brackets is the type.
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

bool readValue(std::u16string_view text, RegistryValue& value) {
    if (startsWith(text, u"dword:"))
        return readNumber(text.substr(6), value);
    if (startsWith(text, u"hex"))
        return readHex(text.substr(3), value);
    std::u16string plain;
    if (!takeQuoted(text, plain))
        return false;
    value = {REG_SZ, textBytes(plain)};
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

}  // namespace

bool Registry::hasKey(std::u16string_view key) const {
    const std::u16string path = folded(key);
    if (keys_.count(path) != 0)
        return true;
    // A key is also there as the parent of another one.
    const auto child = keys_.lower_bound(path + u'\\');
    return child != keys_.end() && startsWith(child->first, path + u'\\');
}

const RegistryValue* Registry::find(std::u16string_view key, std::u16string_view name) const {
    const auto found = keys_.find(folded(key));
    if (found == keys_.end())
        return nullptr;
    const auto value = found->second.values.find(folded(name));
    return value != found->second.values.end() ? &value->second.value : nullptr;
}

void Registry::addKey(std::u16string_view key) {
    keys_.try_emplace(folded(key), Key{std::u16string(key), {}});
}

void Registry::set(std::u16string_view key, std::u16string_view name, RegistryValue value) {
    addKey(key);
    keys_[folded(key)].values[folded(name)] = {std::u16string(name), std::move(value)};
}

Registry Registry::fromText(std::string_view bytes) {
    Registry registry;
    std::u16string text;
    registry.utf16_ = bytes.substr(0, 2) == "\xFF\xFE";
    if (registry.utf16_) {
        for (std::size_t i = 2; i + 1 < bytes.size(); i += 2)
            text += static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) |
                                          (static_cast<unsigned char>(bytes[i + 1]) << 8U));
    } else {
        if (bytes.substr(0, 3) == "\xEF\xBB\xBF")
            bytes.remove_prefix(3);
        text = toUtf16(bytes);
    }

    std::u16string key;
    std::u16string line;
    std::u16string_view rest = text;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find(u'\n'), rest.size() - 1);
        const std::u16string_view piece = rest.substr(0, end + 1);
        rest.remove_prefix(end + 1);
        const std::u16string_view part =
            trimmed(piece.back() == u'\n' ? piece.substr(0, end) : piece);
        // Only a value goes on after a backslash; a new value, key or remark ends it anyway.
        if (!line.empty() && part.find_first_of(u"\"@[;") == 0) {
            registry.addLine(line, key);
            line.clear();
        }
        line += part;
        const bool continued =
            !line.empty() && line.back() == u'\\' && (line[0] == u'"' || line[0] == u'@');
        if (continued) {
            line.pop_back();
        } else {
            registry.addLine(line, key);
            line.clear();
        }
    }
    registry.addLine(line, key);
    return registry;
}

void Registry::addLine(std::u16string_view line, std::u16string& key) {
    if (startsWith(line, u"[") && line.back() == u']') {
        key = line.substr(1, line.size() - 2);
        if (!startsWith(key, u"-"))
            addKey(key);
        return;
    }
    std::u16string name;
    if (startsWith(line, u"@"))
        line.remove_prefix(1);
    else if (!takeQuoted(line, name))
        return;
    line = trimmed(line);
    if (key.empty() || startsWith(key, u"-") || !startsWith(line, u"="))
        return;
    line = trimmed(line.substr(1));

    RegistryValue value;
    if (readValue(line, value))
        set(key, name, std::move(value));
}

std::string Registry::toText() const {
    std::u16string text = u"Windows Registry Editor Version 5.00\r\n";
    for (const auto& [folding, key] : keys_) {
        text += u"\r\n[" + key.path + u"]\r\n";
        for (const auto& [foldedName, named] : key.values)
            text += (named.name.empty() ? u"@" : quoted(named.name)) + u"=" +
                    valueText(named.value) + u"\r\n";
    }
    if (!utf16_)
        return toUtf8(text);
    std::string bytes = "\xFF\xFE";
    for (const char16_t unit : text) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}

}  // namespace host
