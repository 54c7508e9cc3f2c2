#include "platform/posix/registry_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <iterator>

#include "platform/posix/device.h"
#include "platform/posix/last_error.h"
#include "platform/posix/utf.h"

namespace posix {
namespace {

std::string registryPath() {
    return deviceRoot() + "/registry.reg";
}

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

// "hex:01,02" and "hex(2):01,02"; the number in brackets is the type.
RegistryValue readHex(const std::string& text) {
    RegistryValue value{REG_BINARY, {}};
    if (text.compare(0, 4, "hex(") == 0)
        value.type = static_cast<DWORD>(std::strtoul(text.c_str() + 4, nullptr, 16));
    const std::size_t colon = text.find(':');
    for (std::size_t at = colon; at < text.size(); at = text.find(',', at + 1)) {
        const char* start = text.c_str() + at + 1;
        char* end = nullptr;
        const unsigned long byte = std::strtoul(start, &end, 16);
        if (end != start)
            value.data.push_back(static_cast<BYTE>(byte));
    }
    return value;
}

RegistryValue readNumber(const std::string& text) {
    RegistryValue value{REG_DWORD, {}};
    const auto number = static_cast<DWORD>(std::strtoul(text.c_str(), nullptr, 16));
    for (unsigned shift = 0; shift < 32; shift += 8)
        value.data.push_back(static_cast<BYTE>((number >> shift) & 0xFF));
    return value;
}

bool isPlainText(const RegistryValue& value) {
    const std::size_t size = value.data.size();
    if (value.type != REG_SZ || size < 2 || size % 2 != 0)
        return false;
    for (std::size_t i = 0; i < size; i += 2) {
        const unsigned unit = value.data[i] | (value.data[i + 1] << 8U);
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
        const bool continued = !part.empty() && part.back() == u'\\' && part[0] != u'[';
        line += continued ? part.substr(0, part.size() - 1) : part;
        if (!continued) {
            registry.addLine(line, key);
            line.clear();
        }
    }
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

    std::u16string text;
    if (startsWith(line, u"dword:"))
        set(key, name, readNumber(toUtf8(line.substr(6))));
    else if (startsWith(line, u"hex"))
        set(key, name, readHex(toUtf8(line)));
    else if (takeQuoted(line, text))
        set(key, name, {REG_SZ, textBytes(text)});
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

Registry loadRegistry() {
    std::ifstream file(registryPath(), std::ios::binary);
    return Registry::fromText(
        std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()));
}

DWORD saveRegistry(const Registry& registry) {
    const std::string path = registryPath();
    const std::string temporary = path + ".new";
    const std::string text = registry.toText();
    const int file = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (file < 0)
        return windowsError(errno, temporary);
    const bool written =
        ::write(file, text.data(), text.size()) == static_cast<ssize_t>(text.size()) &&
        ::fsync(file) == 0;
    DWORD error = written ? ERROR_SUCCESS : windowsError(errno, temporary);
    ::close(file);
    if (error == ERROR_SUCCESS && ::rename(temporary.c_str(), path.c_str()) != 0)
        error = windowsError(errno, path);
    if (error != ERROR_SUCCESS)
        ::unlink(temporary.c_str());
    return error;
}

}  // namespace posix
