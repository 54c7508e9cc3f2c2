// The encodings between the sources of the data folder (UTF-8) and the device's files (UTF-16LE).
#pragma once

#include <optional>
#include <string>

// The UTF-16 form of UTF-8 text, without a leading byte-order mark; nothing when the bytes are not
// well-formed UTF-8.
std::optional<std::u16string> utf16FromUtf8(const std::string& bytes);

// The bytes of UTF-16 text, low byte first.
std::string utf16LittleEndian(const std::u16string& text);

// "U+00E9": a character as messages show it.
std::string characterName(char16_t character);
