#include "tools/guidata/text_source.h"

#include <algorithm>
#include <map>
#include <optional>

#include "tools/guidata/source_lines.h"
#include "tools/guidata/text_encoding.h"

namespace {

// The device reads at most this many characters of a line, its line end included.
constexpr std::size_t MAX_LINE = 511;
constexpr std::size_t LINE_END_LENGTH = 2;

constexpr const char16_t* BLANKS = u" \t";

bool isKeyCharacter(char16_t character) {
    return (character >= u'A' && character <= u'Z') || (character >= u'0' && character <= u'9') ||
           character == u'_';
}

// Parses a line. Returns nothing, and the reason in `problem`, when the device would misread it.
std::optional<TextEntry> parseEntry(const SourceLine& line, std::string& problem) {
    const std::u16string& text = line.text;
    if (text.size() + LINE_END_LENGTH > MAX_LINE) {
        problem = "the line has " + std::to_string(text.size() + LINE_END_LENGTH) +
                  " characters with its line end; the device reads only " +
                  std::to_string(MAX_LINE);
        return std::nullopt;
    }
    const std::size_t keyEnd = std::min(text.find_first_of(BLANKS), text.size());
    if (keyEnd == 0) {
        problem = "there is a blank before the key";
        return std::nullopt;
    }
    if (!std::all_of(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(keyEnd),
                     isKeyCharacter)) {
        problem = "a key may contain only capitals, digits and underscores";
        return std::nullopt;
    }
    const std::string key(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(keyEnd));
    const std::size_t textStart = text.find_first_not_of(BLANKS, keyEnd);
    if (textStart == std::u16string::npos) {
        problem = key + " has no text";
        return std::nullopt;
    }
    return TextEntry{line.number, key, text.substr(textStart)};
}

void reportMissingKeys(const std::map<std::string, int>& lineOfKey, const std::string& fileName,
                       const ScreenKeys& keys, MessageList& messages) {
    for (const auto& [key, use] : keys) {
        if (lineOfKey.count(key) == 0)
            messages.errors.push_back(std::string(fileName).append(": " + key + " is missing"));
    }
}

}  // namespace

std::vector<TextEntry> parseTextSource(const std::string& source, const std::string& fileName,
                                       const ScreenKeys& keys, MessageList& messages) {
    std::string problem;
    const std::optional<std::vector<SourceLine>> lines = sourceLines(source, fileName, problem);
    if (!lines) {
        messages.errors.push_back(problem);
        return {};
    }
    std::vector<TextEntry> entries;
    std::map<std::string, int> lineOfKey;
    for (const SourceLine& line : *lines) {
        const std::optional<TextEntry> entry = parseEntry(line, problem);
        if (!entry) {
            messages.errors.push_back(at(fileName, line.number) + problem);
            continue;
        }
        const auto [earlier, isNew] = lineOfKey.insert({entry->key, line.number});
        if (!isNew) {
            messages.errors.push_back(at(fileName, line.number) + entry->key +
                                      " is already defined in line " +
                                      std::to_string(earlier->second));
        } else if (!keys.empty() && keys.count(entry->key) == 0) {
            messages.errors.push_back(at(fileName, line.number) + entry->key +
                                      " is not a key of the screen");
        }
        entries.push_back(*entry);
    }
    reportMissingKeys(lineOfKey, fileName, keys, messages);
    return entries;
}

std::string encodeStringTable(const std::vector<TextEntry>& entries) {
    std::u16string table = u"\uFEFF# Texts of the updater's screen\r\n";
    for (const TextEntry& entry : entries) {
        table.append(entry.key.begin(), entry.key.end());
        table += u'\t' + entry.text + u"\r\n";
    }
    return utf16LittleEndian(table);
}
