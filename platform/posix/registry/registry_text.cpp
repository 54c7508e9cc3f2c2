// The registry as text: reading what registry editors export, and writing it.

#include <algorithm>

#include "platform/posix/registry/registry_file.h"
#include "platform/utf.h"

namespace host {
namespace {

constexpr char16_t HEADER[] = u"Windows Registry Editor Version 5.00";
constexpr char UTF16_MARK[] = "\xFF\xFE";
constexpr char UTF8_MARK[] = "\xEF\xBB\xBF";

bool isSame(std::u16string_view one, std::u16string_view other) {
    const auto folded = [](char16_t c) {
        return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c - u'A' + u'a') : c;
    };
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                      [&](char16_t a, char16_t b) { return folded(a) == folded(b); });
}

std::u16string_view trimmed(std::u16string_view text) {
    constexpr char16_t BLANKS[] = u" \t\r\n";
    const std::size_t first = std::min(text.find_first_not_of(BLANKS), text.size());
    return text.substr(first, text.find_last_not_of(BLANKS) + 1 - first);
}

std::u16string decoded(std::string_view bytes, bool isUtf16) {
    if (!isUtf16 && isUtf8(bytes))
        return toUtf16(bytes);
    const std::size_t width = isUtf16 ? 2 : 1;
    std::u16string text;
    for (std::size_t i = 0; i + width <= bytes.size(); i += width) {
        const unsigned high = isUtf16 ? static_cast<unsigned char>(bytes[i + 1]) : 0;
        text += static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) | (high << 8U));
    }
    return text;
}

}  // namespace

Registry::Key* Registry::findKey(std::u16string_view path) {
    const auto found = std::find_if(keys_.begin(), keys_.end(),
                                    [&](const Key& key) { return isSame(key.path, path); });
    return found != keys_.end() ? &*found : nullptr;
}

bool Registry::hasKey(std::u16string_view key) const {
    return std::any_of(keys_.begin(), keys_.end(), [&](const Key& other) {
        const std::u16string_view path = other.path;
        return isSame(path.substr(0, key.size()), key) &&
               (path.size() == key.size() || path[key.size()] == u'\\');
    });
}

const RegistryValue* Registry::find(std::u16string_view key, std::u16string_view name) const {
    for (const Key& each : keys_)
        for (const Value& value : each.values)
            if (isSame(each.path, key) && isSame(value.name, name))
                return &value.value;
    return nullptr;
}

void Registry::set(std::u16string_view key, std::u16string_view name, RegistryValue value) {
    Key* owner = findKey(key);
    if (owner == nullptr)
        owner = &keys_.emplace_back(Key{std::u16string(key), {}});
    for (Value& present : owner->values)
        if (isSame(present.name, name)) {
            present.value = std::move(value);
            return;
        }
    owner->values.push_back({std::u16string(name), std::move(value)});
}

Registry Registry::fromText(std::string_view bytes) {
    Registry registry;
    for (const std::string_view mark : {UTF16_MARK, UTF8_MARK})
        if (bytes.substr(0, mark.size()) == mark)
            registry.mark_ = mark;
    const std::u16string text =
        decoded(bytes.substr(registry.mark_.size()), registry.mark_ == UTF16_MARK);
    std::u16string line;
    std::size_t number = 0;
    std::u16string key;
    for (std::size_t start = 0; start < text.size(); ++number) {
        const std::size_t end = std::min(text.find(u'\n', start), text.size());
        line += trimmed(std::u16string_view(text).substr(start, end - start));
        start = end + 1;
        // The bytes of a long value go on in the next line.
        if (line.size() > 1 && line.compare(line.size() - 2, 2, u",\\") == 0 &&
            start < text.size()) {
            line.pop_back();
            continue;
        }
        if (!registry.addLine(line, key) && registry.unknownLine_ == 0)
            registry.unknownLine_ = number + 1;
        line.clear();
    }
    return registry;
}

// `key` is the key to which the line belongs. Returns false when the line cannot be parsed.
bool Registry::addLine(std::u16string_view line, std::u16string& key) {
    if (line.empty() || line == HEADER)
        return true;
    if (line[0] == u';') {
        hasComments_ = true;
        return true;
    }
    if (line[0] == u'[') {
        const bool isKey = line.size() > 2 && line.back() == u']' && line[1] != u'-';
        key = isKey ? line.substr(1, line.size() - 2) : std::u16string_view();
        if (isKey && findKey(key) == nullptr)
            keys_.push_back({key, {}});
        return isKey;
    }
    std::u16string name;
    if (line[0] == u'@')
        line.remove_prefix(1);
    else if (!takeQuoted(line, name))
        return false;
    line = trimmed(line);
    RegistryValue value;
    if (key.empty() || line.empty() || line[0] != u'=' ||
        !readValue(trimmed(line.substr(1)), value))
        return false;
    set(key, name, std::move(value));
    return true;
}

std::string Registry::toText() const {
    std::u16string text = HEADER + std::u16string(u"\r\n");
    for (const Key& key : keys_) {
        text += u"\r\n[" + key.path + u"]\r\n";
        for (const Value& value : key.values)
            text += (value.name.empty() ? u"@" : quoted(value.name)) + u"=" +
                    valueText(value.value) + u"\r\n";
    }
    if (mark_ != UTF16_MARK)
        return mark_ + toUtf8(text);
    std::string bytes = mark_;
    for (const char16_t unit : text) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}

}  // namespace host
