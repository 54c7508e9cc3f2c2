// Conversion between UTF-8, the encoding of the sources in data/, and UTF-16LE, that of the
// device's files.
#pragma once

#include <optional>
#include <string>

// Converts UTF-8 to UTF-16 and drops a leading byte-order mark. Returns nothing when the bytes are
// not well-formed UTF-8.
std::optional<std::u16string> utf16FromUtf8(const std::string& bytes);

// Returns the bytes of UTF-16 text, low byte first.
std::string utf16LittleEndian(const std::u16string& text);

// Returns the name of a character for messages, such as "U+00E9".
std::string characterName(char16_t character);
