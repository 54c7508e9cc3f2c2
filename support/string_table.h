// The texts that the screen shows, looked up by key in the operator's language.
//
// A table file is UTF-16LE text with CR LF line ends. A line is a key, blanks, and the text up to
// the line end; a '#' in the first column makes a comment. Later lines replace earlier ones.
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

    // Starts afresh with the entries shared by all languages and those of `language`: 0 English,
    // 1 French, 2 Portuguese, 3 Spanish, 4 Japanese, 5 Chinese, 6 the file "du". Any other
    // number is logged and leaves the shared entries alone. A missing file contributes nothing.
    void setLanguage(int32_t language);

    // Adds the entries of a file of the "lang/" folder. Returns 0 when it was read, 1 when no name
    // is given (null or empty), 2 when the file could not be opened.
    int load(const char* fileName);

    // The text for `key`, or "<NO STRING>". Looking up adds no entry.
    const WideString& lookup(std::string_view key) const;

    int32_t language() const { return language_; }
    bool isLoaded() const { return loaded_; }

  private:
    StringTable() = default;

    void addLine(const WideString& line);

    std::map<std::string, WideString, std::less<>> entries_;
    WideString fallback_ = TEXT("<NO STRING>");
    int32_t language_ = 0;
    bool loaded_ = false;
};
