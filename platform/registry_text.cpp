// Values are written as "dword:0000001f", "hex:01,ff", "hex(2):41,00" with the type in brackets, or
// text in quotes.

#include "platform/registry_text.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <iomanip>
#include <sstream>

#include "platform/utf.h"

namespace host {
namespace {

constexpr char HEADER[] = "Windows Registry Editor Version 5.00";
constexpr char UTF16_MARK[] = "\xFF\xFE";
constexpr char UTF8_MARK[] = "\xEF\xBB\xBF";

// The bytes of an object of a little-endian computer, which are those of the file.
template <class Object>
std::string bytesOf(const Object* first, std::size_t count) {
    return {reinterpret_cast<const char*>(first), count * sizeof *first};
}

std::u16string unitsOf(std::string_view bytes) {
    std::u16string text(bytes.size() / sizeof(char16_t), u'\0');
    std::memcpy(text.data(), bytes.data(), text.size() * sizeof(char16_t));
    return text;
}

std::string trimmed(const std::string& text) {
    constexpr char BLANKS[] = " \t\r";
    const std::size_t first = std::min(text.find_first_not_of(BLANKS), text.size());
    return text.substr(first, text.find_last_not_of(BLANKS) + 1 - first);
}

// Parses one to `most` hexadecimal digits.
bool readNumber(const std::string& text, std::size_t most, DWORD& number) {
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number, 16);
    return text.size() <= most && error == std::errc() && stop == end;
}

bool readValue(std::istream& line, RegistryValue& value) {
    std::string part;
    if ((line >> std::ws).peek() == '"') {
        line >> std::quoted(part);
        const std::u16string text = toUtf16(part);
        value = {REG_SZ, bytesOf(text.c_str(), text.size() + 1)};
        return line && (line >> std::ws).eof();
    }
    std::getline(line, part, ':');
    const bool isNumber = part == "dword";
    value.type = isNumber ? REG_DWORD : REG_BINARY;
    const bool hasType = part.size() > 5 && part.compare(0, 4, "hex(") == 0 && part.back() == ')' &&
                         readNumber(part.substr(4, part.size() - 5), 8, value.type);
    if (line.eof() || (!isNumber && !hasType && part != "hex"))
        return false;
    for (DWORD number = 0; std::getline(line, part, ',');) {
        if (!readNumber(part, isNumber ? 8 : 2, number))
            return false;
        value.data += bytesOf(&number, 1).substr(0, isNumber ? 4 : 1);
    }
    return !isNumber || value.data.size() == 4;
}

// `values` are those of the key to which the line belongs. Returns false when the line is neither a
// key nor a value.
bool readLine(const std::string& text, Registry& registry, Registry::Values*& values) {
    if (!isUtf8(text))
        return false;
    if (text[0] == '[') {
        const bool isKey = text.size() > 2 && text.back() == ']' && text[1] != '-';
        values = isKey ? &registry.keys[text.substr(1, text.size() - 2)] : nullptr;
        return isKey;
    }
    std::istringstream line(text);
    std::string name;
    if (text[0] == '@')
        line.ignore();
    else if (text[0] != '"' || !(line >> std::quoted(name)))
        return false;
    char equals = 0;
    RegistryValue value;
    if (!(line >> equals) || equals != '=' || values == nullptr || !readValue(line, value))
        return false;
    (*values)[name] = value;
    return true;
}

// Whether the value is a text with its terminator, all of which can stand in a line of a file.
bool isPlainText(const RegistryValue& value) {
    const std::u16string text = unitsOf(value.data);
    const auto isOdd = [](char16_t c) { return c < 0x20 || (c >= 0xD800 && c <= 0xDFFF); };
    const auto odd = std::find_if(text.begin(), text.end(), isOdd);
    return value.type == REG_SZ && value.data.size() % 2 == 0 && odd != text.end() && *odd == 0 &&
           odd + 1 == text.end();
}

void writeValue(const RegistryValue& value, std::ostream& text) {
    text << std::hex << std::setfill('0');
    DWORD number = 0;
    if (isPlainText(value)) {
        text << std::quoted(toUtf8(unitsOf(value.data).c_str()));
    } else if (value.type == REG_DWORD && value.data.size() == sizeof number) {
        std::memcpy(&number, value.data.data(), sizeof number);
        text << "dword:" << std::setw(8) << number;
    } else {
        text << "hex";
        if (value.type != REG_BINARY)
            text << '(' << value.type << ')';
        char separator = ':';
        for (const char byte : value.data) {
            text << separator << std::setw(2) << (unsigned{0xFF} & static_cast<unsigned>(byte));
            separator = ',';
        }
        if (value.data.empty())
            text << separator;
    }
}

}  // namespace

bool IgnoringCase::operator()(const std::string& one, const std::string& other) const {
    const auto folded = [](char c) { return c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c; };
    return std::lexicographical_compare(one.begin(), one.end(), other.begin(), other.end(),
                                        [&](char a, char b) { return folded(a) < folded(b); });
}

bool Registry::hasKey(const std::string& path) const {
    // The paths between these two begin with this one and a backslash.
    return keys.count(path) != 0 || keys.lower_bound(path + "\\") != keys.lower_bound(path + "]");
}

const RegistryValue* Registry::find(const std::string& path, const std::string& name) const {
    const auto key = keys.find(path);
    if (key == keys.end() || key->second.count(name) == 0)
        return nullptr;
    return &key->second.at(name);
}

Registry Registry::fromText(std::string_view bytes) {
    Registry registry;
    for (const std::string_view mark : {UTF16_MARK, UTF8_MARK})
        if (bytes.substr(0, mark.size()) == mark)
            registry.mark = mark;
    bytes.remove_prefix(registry.mark.size());
    std::istringstream lines(registry.mark == UTF16_MARK ? toUtf8(unitsOf(bytes))
                                                         : std::string(bytes));
    Values* values = nullptr;
    std::string line;
    std::size_t number = 0;
    for (std::string piece; std::getline(lines, piece);) {
        ++number;
        line += trimmed(piece);
        // The bytes of a long value go on in the next line.
        if (line.size() > 1 && line.compare(line.size() - 2, 2, ",\\") == 0 &&
            lines.peek() != EOF) {
            line.pop_back();
            continue;
        }
        const bool isRead = line.empty() || line == HEADER || readLine(line, registry, values);
        if (!isRead && registry.lostLine == 0)
            registry.lostLine = number;
        line.clear();
    }
    return registry;
}

std::string Registry::toText() const {
    std::ostringstream text;
    text << HEADER << "\r\n";
    for (const auto& [path, values] : keys) {
        text << "\r\n[" << path << "]\r\n";
        for (const auto& [name, value] : values) {
            if (name.empty())
                text << '@';
            else
                text << std::quoted(name);
            text << '=';
            writeValue(value, text);
            text << "\r\n";
        }
    }
    if (mark != UTF16_MARK)
        return mark + text.str();
    const std::u16string wide = toUtf16(text.str());
    return mark + bytesOf(wide.data(), wide.size());
}

}  // namespace host
