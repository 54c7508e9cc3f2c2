// The UTF-8 source of a string table: lines of a key, blanks and the text of that key.
#pragma once

#include <string>
#include <vector>

#include "tools/guidata/message_list.h"
#include "tools/screen_keys.h"

struct TextEntry {
    int line;
    std::string key;
    std::u16string text;  // blanks at its end belong to it
};

// The entries of a source. Whatever the device's reader would take for something else is an error:
// lines that it would cut, keys that are doubled, malformed or not in `keys`, and keys of `keys`
// that are missing. An empty `keys` lets any key pass.
std::vector<TextEntry> parseTextSource(const std::string& source, const std::string& fileName,
                                       const ScreenKeys& keys, MessageList& messages);

// The bytes of the device's file: UTF-16LE with a byte-order mark, lines ended by CR LF. The first
// line is a comment, so that a reader which keeps the mark loses no entry by it.
std::string encodeStringTable(const std::vector<TextEntry>& entries);
