// The UTF-8 source of a string table: each line is a key, blanks, and the text for the key.
#pragma once

#include <string>
#include <vector>

#include "tools/screen_keys.h"

struct TextEntry {
    int line;
    std::string key;
    std::u16string text;  // with any trailing blanks
};

// Parses a source. Throws std::runtime_error that names everything that the device would misread,
// in one line each: lines that are too long, and keys that are repeated, malformed, not in `keys`,
// or in `keys` but not in the source. When `keys` is empty, every key is accepted.
std::vector<TextEntry> parseTextSource(const std::string& source, const std::string& fileName,
                                       const ScreenKeys& keys);

// Returns the bytes of the device's file: UTF-16LE with a byte-order mark and CR LF line ends. The
// first line is a comment, so that a reader that does not skip the mark loses no entry.
std::string encodeStringTable(const std::vector<TextEntry>& entries);
