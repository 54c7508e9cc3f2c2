// Conversion between the program's UTF-16 and the host's UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace host {

// Whether all bytes are well-formed UTF-8.
bool isUtf8(std::string_view bytes);

// A byte that is not valid UTF-8 becomes a lone low surrogate (0xDC00 plus the byte), which toUtf8
// turns back into the byte: every host name survives a round trip.
std::u16string toUtf16(std::string_view utf8);

std::string toUtf8(std::u16string_view utf16);
void appendUtf8(std::string& text, std::u16string_view utf16);

// Folds case for comparing names, because the instrument's disks and FAT ignore case. Covers
// Latin-1, the letters that a path of the program can contain.
std::string foldCase(const std::string& utf8);

}  // namespace host
