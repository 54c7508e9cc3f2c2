// The lines of the registry file: parsing them, and finding the lines that a new value changes.

#include "platform/posix/registry/registry_file.h"

#include <algorithm>
#include <utility>

#include "platform/posix/utf.h"

namespace host {
namespace {

char16_t folded(char16_t c) {
    return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c - u'A' + u'a') : c;
}

bool isSame(std::u16string_view one, std::u16string_view other) {
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                      [](char16_t a, char16_t b) { return folded(a) == folded(b); });
}

bool isAtOrBelow(std::u16string_view key, std::u16string_view parent) {
    return isSame(key.substr(0, parent.size()), parent) &&
           (key.size() == parent.size() || key[parent.size()] == u'\\');
}

std::u16string decoded(std::string_view bytes, std::string_view mark) {
    if (mark.size() != 2)
        return toUtf16(bytes);
    const unsigned low = mark[0] == '\xFF' ? 0 : 1;
    std::u16string text;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2)
        text += static_cast<char16_t>(static_cast<unsigned char>(bytes[i + low]) |
                                      (static_cast<unsigned char>(bytes[i + 1 - low]) << 8U));
    return text;
}

std::string encoded(std::u16string_view text, std::string_view mark) {
    if (mark.size() != 2)
        return toUtf8(text);
    const unsigned first = mark[0] == '\xFF' ? 0 : 8;
    std::string bytes;
    for (const char16_t unit : text) {
        bytes += static_cast<char>((unit >> first) & 0xFF);
        bytes += static_cast<char>((unit >> (8 - first)) & 0xFF);
    }
    return bytes;
}

}  // namespace

// Returns the last line that fits and after which the key is not removed.
template <class Fits>
std::size_t Registry::lastLine(std::u16string_view key, Fits fits) const {
    for (std::size_t i = lines_.size(); i-- > 0;) {
        const Line& line = lines_[i];
        if (line.effect == Effect::NoKey && isAtOrBelow(key, line.key))
            break;
        if (fits(line))
            return i;
    }
    return NONE;
}

std::size_t Registry::valueLine(std::u16string_view key, std::u16string_view name) const {
    const std::size_t last = lastLine(key, [&](const Line& line) {
        return (line.effect == Effect::Value || line.effect == Effect::NoValue) &&
               isSame(line.key, key) && isSame(line.name, name);
    });
    return last != NONE && lines_[last].effect == Effect::Value ? last : NONE;
}

// A key also exists as the parent of another key.
bool Registry::hasKey(std::u16string_view key) const {
    return lastLine(key, [&](const Line& line) {
               return line.effect == Effect::Key && isAtOrBelow(line.key, key);
           }) != NONE;
}

const RegistryValue* Registry::find(std::u16string_view key, std::u16string_view name) const {
    const std::size_t line = valueLine(key, name);
    return line != NONE ? &lines_[line].value : nullptr;
}

void Registry::set(std::u16string_view key, std::u16string_view name, RegistryValue value) {
    std::size_t at = valueLine(key, name);
    if (at == NONE) {
        // After the last value of the key, or after the key itself.
        const std::size_t last = lastLine(key, [&](const Line& line) {
            return line.effect != Effect::NoKey && isSame(line.key, key);
        });
        at = last != NONE ? last + 1 : lines_.size();
        const std::u16string path(key);
        if (last == NONE) {
            const char16_t* const start =
                lines_.empty() ? u"Windows Registry Editor Version 5.00\r\n\r\n[" : u"\r\n[";
            add(at++, {start + path + u"]\r\n", Effect::Key, path, {}, {}, {}});
        }
        add(at, {{}, Effect::Value, path, std::u16string(name), {}, {}});
    }
    Line& line = lines_[at];
    line.value = std::move(value);
    line.text = (line.name.empty() ? u"@" : quoted(line.name)) + u"=" + valueText(line.value) +
                (line.remark.empty() ? u"" : u" ") + line.remark + u"\r\n";
}

void Registry::add(std::size_t at, Line line) {
    if (at > 0 && lines_[at - 1].text.back() != u'\n')
        lines_[at - 1].text += u"\r\n";
    lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(at), std::move(line));
}

Registry Registry::fromText(std::string_view bytes) {
    Registry registry;
    for (const std::string_view mark : {"\xFF\xFE", "\xFE\xFF", "\xEF\xBB\xBF"})
        if (bytes.substr(0, mark.size()) == mark)
            registry.mark_ = mark;
    const std::u16string text = decoded(bytes.substr(registry.mark_.size()), registry.mark_);

    std::u16string key;
    std::u16string joined;
    std::size_t start = 0;
    const auto addUpTo = [&](std::size_t end) {
        registry.addRead(std::u16string_view(text).substr(start, end - start), joined, key);
        joined.clear();
        start = end;
    };
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find(u'\n', at), text.size() - 1) + 1;
        const std::u16string_view part = trimmed(std::u16string_view(text).substr(at, end - at));
        // Only values continue after a backslash. A line that begins a value, a key or a comment
        // ends the continuation.
        if (start < at && part.find_first_of(u"\"@[;") == 0)
            addUpTo(at);
        joined += part;
        if (!joined.empty() && joined.back() == u'\\' && (joined[0] == u'"' || joined[0] == u'@'))
            joined.pop_back();
        else
            addUpTo(end);
        at = end;
    }
    if (start < text.size())
        addUpTo(text.size());
    return registry;
}

// `joined` is `text` as one line, without blanks around it.
void Registry::addRead(std::u16string_view text, std::u16string_view joined, std::u16string& key) {
    lines_.push_back({std::u16string(text), Effect::None, {}, {}, {}, {}});
    Line& line = lines_.back();
    const std::size_t bracket = joined.rfind(u']');
    if (startsWith(joined, u"[") && bracket != std::u16string_view::npos) {
        const bool removes = startsWith(joined, u"[-");
        const std::size_t start = removes ? 2 : 1;
        line.key = joined.substr(start, bracket - start);
        line.effect = removes ? Effect::NoKey : Effect::Key;
        // Values after a removed key belong to no key.
        key = removes ? std::u16string() : line.key;
        return;
    }
    if (startsWith(joined, u"@"))
        joined.remove_prefix(1);
    else if (!takeQuoted(joined, line.name))
        return;
    joined = trimmed(joined);
    if (!startsWith(joined, u"="))
        return;
    joined = trimmed(joined.substr(1));
    const bool removes = startsWith(joined, u"-");
    if (removes)
        joined.remove_prefix(1);
    else if (!takeValue(joined, line.value))
        return;
    line.key = key;
    line.remark = trimmed(joined);
    if (line.remark.empty() || line.remark[0] == u';')
        line.effect = removes ? Effect::NoValue : Effect::Value;
}

std::string Registry::toText() const {
    std::u16string text;
    for (const Line& line : lines_)
        text += line.text;
    return mark_ + encoded(text, mark_);
}

}  // namespace host
