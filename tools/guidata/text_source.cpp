#include "tools/guidata/text_source.h"

#include <algorithm>
#include <map>
#include <stdexcept>

#include "support/utf16_reader.h"
#include "tools/guidata/source_lines.h"
#include "tools/guidata/text_encoding.h"

namespace {

// The device reads at most this many characters of a line, its line end included.
constexpr std::size_t MAX_LINE = Utf16Reader::MAX_LINE;
constexpr std::size_t LINE_END_LENGTH = 2;

constexpr const char16_t* BLANKS = u" \t";

bool isKeyCharacter(char16_t character) {
    return (character >= u'A' && character <= u'Z') || (character >= u'0' && character <= u'9') ||
           character == u'_';
}

// Parses a line. Throws std::runtime_error when the device would misread it.
TextEntry parseEntry(const SourceLine& line) {
    const std::u16string& text = line.text;
    const std::size_t length = text.size() + LINE_END_LENGTH;
    if (length > MAX_LINE)
        throw std::runtime_error("the line has " + std::to_string(length) +
                                 " characters with its line end; the device reads only " +
                                 std::to_string(MAX_LINE));
    const std::size_t keyEnd = std::min(text.find_first_of(BLANKS), text.size());
    if (keyEnd == 0)
        throw std::runtime_error("there is a blank before the key");
    const std::u16string key = text.substr(0, keyEnd);
    if (!std::all_of(key.begin(), key.end(), isKeyCharacter))
        throw std::runtime_error("a key may contain only capitals, digits and underscores");
    const TextEntry entry = {line.number, std::string(key.begin(), key.end()), {}};
    const std::size_t textStart = text.find_first_not_of(BLANKS, keyEnd);
    if (textStart == std::u16string::npos)
        throw std::runtime_error(entry.key + " has no text");
    return {entry.line, entry.key, text.substr(textStart)};
}

}  // namespace

std::vector<TextEntry> parseTextSource(const std::string& source, const std::string& fileName,
                                       const ScreenKeys& keys) {
    std::string errors;
    std::vector<TextEntry> entries;
    std::map<std::string, int> lineOfKey;
    for (const SourceLine& line : sourceLines(source, fileName)) {
        try {
            const TextEntry& entry = entries.emplace_back(parseEntry(line));
            const auto [earlier, isNew] = lineOfKey.insert({entry.key, line.number});
            if (!isNew)
                throw std::runtime_error(entry.key + " is already defined in line " +
                                         std::to_string(earlier->second));
            if (!keys.empty() && keys.count(entry.key) == 0)
                throw std::runtime_error(entry.key + " is not a key of the screen");
        } catch (const std::runtime_error& problem) {
            errors += "\n" + at(fileName, line.number) + problem.what();
        }
    }
    for (const auto& [key, use] : keys) {
        if (lineOfKey.count(key) == 0)
            errors.append("\n").append(fileName).append(": ").append(key).append(" is missing");
    }
    if (!errors.empty())
        throw std::runtime_error(fileName + " cannot be used:" + errors);
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
