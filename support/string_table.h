// The texts of the screen, looked up by key in the operator's language.
//
// A string table is UTF-16LE text with CR LF line ends. Each line consists of a text key, blanks,
// and the text up to the line end; a line that begins with '#' is a comment. Later lines replace
// earlier ones with the same text key.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "platform/win32.h"

class StringTable {
  public:
    // The process-wide table, empty until setLanguage.
    static StringTable& instance();

    // Reloads the table with the entries shared by all languages and those of `language`, a number
    // of LANGUAGES. Any other number is logged and leaves only the shared entries. A missing file
    // is ignored.
    void setLanguage(int32_t language);

    // Adds the entries of a file in the "lang/" folder. Returns 0 on success, 1 when the name is
    // null or empty, 2 when the file cannot be opened.
    int load(const char* fileName);

    // What is shown for a key without a text.
    static constexpr LPCWSTR NO_TEXT = TEXT("<NO STRING>");

    // Returns the text for `key`, or NO_TEXT when there is none.
    const WideString& lookup(std::string_view key) const;

    int32_t language() const { return language_; }
    bool isLoaded() const { return loaded_; }

  private:
    StringTable() = default;

    void addLine(const WideString& line);

    std::map<std::string, WideString, std::less<>> entries_;
    WideString fallback_ = NO_TEXT;
    int32_t language_ = 0;
    bool loaded_ = false;
};
