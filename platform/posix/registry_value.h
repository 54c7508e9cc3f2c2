// A value of the registry, and its text form: "dword:0000001f", "hex:01,ff", "hex(2):41,00" with
// the number of the type, or a text between quotes.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/posix/win32_api.h"

namespace host {

struct RegistryValue {
    DWORD type = 0;
    std::vector<BYTE> data;
};

bool startsWith(std::u16string_view text, std::u16string_view start);

// Without the blanks and line ends around it.
std::u16string_view trimmed(std::u16string_view text);

// Reads a text between quotes at the start of `line`, and takes it off. Returns false without one.
bool takeQuoted(std::u16string_view& line, std::u16string& text);
std::u16string quoted(std::u16string_view text);

// Reads the value at the start of `text`, and takes it off. Returns false without one.
bool takeValue(std::u16string_view& text, RegistryValue& value);
std::u16string valueText(const RegistryValue& value);

}  // namespace host
