// Between the system's UTF-16 and the host's UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace host {

// A byte that is not UTF-8 becomes a lone low surrogate (0xDC00 plus the byte), as toUtf8 expects
// it back: any host name survives the way there and back.
std::u16string toUtf16(std::string_view utf8);

std::string toUtf8(std::u16string_view utf16);
void appendUtf8(std::string& text, std::u16string_view utf16);

// For comparing names as the instrument's disks and FAT sticks do, which know no case; for the
// letters that a path of the program can hold, those of Latin-1.
std::string foldCase(const std::string& utf8);

}  // namespace host
