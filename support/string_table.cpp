#include "support/string_table.h"

#include "platform/input_limits.h"
#include "support/languages.h"
#include "support/logger.h"
#include "support/system_settings.h"
#include "support/text.h"
#include "support/utf16_reader.h"

namespace {

constexpr LPCWSTR BLANKS = TEXT(" \t");
constexpr LPCWSTR LINE_END = TEXT("\r\n");
constexpr std::size_t LINE_END_LENGTH = 2;

}  // namespace

StringTable& StringTable::instance() {
    static StringTable table;
    return table;
}

void StringTable::setLanguage(int32_t language) {
    entries_.clear();
    // The empty key maps to an empty text, not to the fallback for unknown keys.
    entries_[""] = WideString();
    load(stringTableFile(NUMERALS).c_str());
    if (const Language* const known = findLanguage(language))
        load(stringTableFile(known->suffix).c_str());
    else
        Logger::instance().error("Language %d not recognized in StringTable...", language);
    language_ = language;
    loaded_ = true;
}

int StringTable::load(const char* fileName) {
    if (fileName == nullptr || *fileName == '\0')
        return 1;
    Utf16Reader file(SystemSettings::instance().dataFolder + "lang/" + fileName,
                     limits::STRING_TABLE);
    if (!file.isOpen())
        return 2;
    WideString line;
    while (file.readLine(line))
        addLine(line);
    return 0;
}

void StringTable::addLine(const WideString& line) {
    if (line.empty() || line[0] == TEXT('#'))
        return;
    const std::size_t keyEnd = line.find_first_of(BLANKS);
    const std::size_t textStart = line.find_first_not_of(BLANKS, keyEnd);
    // Lines without a key or without a text end here too: a search that starts at npos finds
    // nothing.
    if (line.find_first_not_of(LINE_END, textStart) == WideString::npos)
        return;
    // Two characters are cut for CR LF without a check: a last line without a line end loses the
    // last two characters of its text. Kept.
    const std::size_t rest = line.size() - textStart;
    const std::size_t length = rest > LINE_END_LENGTH ? rest - LINE_END_LENGTH : 0;
    entries_[narrow(line.substr(0, keyEnd))] = line.substr(textStart, length);
}

const WideString& StringTable::lookup(std::string_view key) const {
    const auto entry = entries_.find(key);
    return entry != entries_.end() ? entry->second : fallback_;
}
